// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QImage>

#include <memory>
#include <optional>
#include <string>

namespace rvengine {

/// A colour look-up table of a `.cube` file: three curves (LUT_1D_SIZE 2 to 65536) or a cube
/// (LUT_3D_SIZE 2 to 256) that is interpolated by tetrahedra. What a table gives outside of 0 to 1
/// counts as 0 or 1, and what lies outside of its domain has the colour of the domain's border.
///
/// Never changed once it was made: any thread may use it. Copies share the colours.
class ColorTable
{
public:
    /// The table in the file at a UTF-8 path; nothing when it cannot be read, is larger than
    /// 512 MiB or is no table.
    static std::optional<ColorTable> load(const std::string& path);

    /// The table of such a text, in any locale; nothing when a line of it is not understood, or
    /// when it has not just as many colours as it says.
    static std::optional<ColorTable> parse(const QByteArray& text);

    /// Replaces the colours by those of the table, by a `strength` from 0 (left alone) to 1; one
    /// that is no number is 0. The alpha stays. Pictures of other formats than RGB32 and
    /// ARGB32_Premultiplied become ARGB32_Premultiplied.
    void apply(QImage& picture, double strength) const;

private:
    struct Table;

    explicit ColorTable(std::shared_ptr<const Table> table);

    std::shared_ptr<const Table> m_table;
};

} // namespace rvengine
