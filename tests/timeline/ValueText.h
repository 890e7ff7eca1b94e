// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <kparextension/RvARFaceGroupData.h>

#include <QImage>
#include <QPointF>

#include <array>
#include <map>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

/// The values of records and tracks as texts: equal values have equal texts, others have not.
struct ValueText
{
    static std::string of(double value);
    static std::string of(const std::string& value) { return '"' + value + '"'; }
    static std::string of(const QPointF& value);
    static std::string of(const QImage& value);
    static std::string of(const qkpar::RvARMakeupARGroupData& value);
    static std::string of(const qkpar::RvARFaceGroupData& value);

    template <class Number>
    static std::enable_if_t<std::is_integral_v<Number>, std::string> of(Number value)
    {
        return std::to_string(value);
    }
    template <class Enum>
    static std::enable_if_t<std::is_enum_v<Enum>, std::string> of(Enum value)
    {
        return std::to_string(static_cast<long long>(value));
    }
    static std::string of(float value) { return of(static_cast<double>(value)); }

    template <class First, class Second>
    static std::string of(const std::pair<First, Second>& value)
    {
        return '(' + of(value.first) + ", " + of(value.second) + ')';
    }
    static std::string of(const std::tuple<float, float, float>& value)
    {
        const auto [x, y, z] = value;
        return '(' + of(x) + ", " + of(y) + ", " + of(z) + ')';
    }
    template <class Element, std::size_t size>
    static std::string of(const std::array<Element, size>& value)
    {
        return listed(value);
    }
    template <class Element>
    static std::string of(const std::vector<Element>& value)
    {
        return listed(value);
    }
    template <class Key, class Element>
    static std::string of(const std::map<Key, Element>& value)
    {
        return listed(value);
    }

private:
    template <class List>
    static std::string listed(const List& list)
    {
        std::string text = "{";
        for (const auto& element : list)
            text += of(element) + ';';
        return text + '}';
    }
};
