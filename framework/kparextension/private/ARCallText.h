// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <kparextension/RvARFaceGroupData.h>
#include <kparextension/RvARLiquifyOperation.h>
#include <kparextension/RvARMakeupARGroupData.h>
#include <rvkpcore/private/CallRecorder.h>

#include <QImage>
#include <QPointF>

#include <map>
#include <string>
#include <vector>

/// The AR values as they stand in an entry of the call log: points in parentheses, lists, maps and
/// structures in braces, an image by its size and a checksum of its pixels.
namespace qrvkp::calls {

template <>
struct ArgumentText<QPointF>
{
    static std::string of(const QPointF& point);
};
template <>
struct ArgumentText<QImage>
{
    static std::string of(const QImage& image);
};
template <>
struct ArgumentText<qkpar::RvARLiquifyOperation>
{
    static std::string of(const qkpar::RvARLiquifyOperation& operation);
};
template <>
struct ArgumentText<qkpar::RvARMakeupARGroupData>
{
    static std::string of(const qkpar::RvARMakeupARGroupData& group);
};
template <>
struct ArgumentText<qkpar::RvARFaceGroupData>
{
    static std::string of(const qkpar::RvARFaceGroupData& face);
};

template <class Value>
struct ArgumentText<std::vector<Value>>
{
    static std::string of(const std::vector<Value>& values)
    {
        std::string result = "{";
        for (const Value& value : values)
            result += (result.size() > 1 ? ", " : "") + ArgumentText<Value>::of(value);
        return result + '}';
    }
};

template <class Key, class Value>
struct ArgumentText<std::map<Key, Value>>
{
    static std::string of(const std::map<Key, Value>& map)
    {
        std::string result = "{";
        for (const auto& [key, value] : map)
            result +=
                (result.size() > 1 ? ", " : "") + text(key) + ": " + ArgumentText<Value>::of(value);
        return result + '}';
    }
};

} // namespace qrvkp::calls
