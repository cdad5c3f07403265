#pragma once

/// @file
/// Random JSON texts for property tests.

#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include <bit>
#include <cmath>
#include <random>
#include <string>

/// Makes values that JSON can hold, of every kind and nested.
class RandomJSON {
public:
    explicit RandomJSON(unsigned seed)
        : m_engine(seed)
    {}

    int below(int bound) { return static_cast<int>(m_engine() % static_cast<unsigned>(bound)); }

    std::string text()
    {
        static const char* const pieces[] = {"a", "key", "\"", "\\", "/", "\n", "\x01", "ä", "€", "😀", "0",
            " ", "longer text without anything to escape", "\x7F"};
        std::string result;
        for (int count = below(4); count > 0; --count)
            result += pieces[below(static_cast<int>(std::size(pieces)))];
        return result;
    }

    double number()
    {
        if (below(2) == 0)
            return static_cast<double>(below(2'000'000) - 1'000'000) / 100;
        const auto bits = static_cast<std::uint64_t>(m_engine()) << 32U | m_engine();
        const auto value = std::bit_cast<double>(bits);
        return std::isfinite(value) ? value : 0.5;
    }

    orrenby::Any value(int depth = 0)
    {
        switch (below(depth < 4 ? 8 : 6)) {
        case 0:
            return {};
        case 1:
            return below(2) == 0;
        case 2:
            return orrenby::Any::parsedNumber(
                static_cast<std::int64_t>(static_cast<std::uint64_t>(m_engine()) << 32U | m_engine()));
        case 3:
            return below(100);
        case 4:
            return number();
        case 5:
            return text();
        case 6:
            return list(depth);
        default:
            return dictionary(depth);
        }
    }

    orrenby::Array list(int depth)
    {
        orrenby::Array result;
        for (int count = below(5); count > 0; --count)
            result.push_back(value(depth + 1));
        return result;
    }

    orrenby::Dictionary dictionary(int depth)
    {
        orrenby::Dictionary result;
        for (int count = below(5); count > 0; --count)
            result.set(text(), value(depth + 1));
        return result;
    }

private:
    std::mt19937 m_engine;
};
