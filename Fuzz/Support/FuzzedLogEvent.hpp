#pragma once

/// @file
/// Log events made of arbitrary bytes.

#include "Fuzz/Support/FuzzedBytes.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/NSSet.hpp"
#include "Orrenby/Utilities/Log/Event.hpp"
#include <bit>

inline orrenby::Any fuzzedValue(FuzzedBytes& bytes, int depth);

inline orrenby::Dictionary fuzzedDictionary(FuzzedBytes& bytes, int depth)
{
    orrenby::Dictionary dictionary;
    for (int count = bytes.number() % 5; count > 0 && !bytes.isEmpty(); --count) {
        const auto key = bytes.text();
        dictionary.set(key, fuzzedValue(bytes, depth + 1));
    }
    return dictionary;
}

inline orrenby::Any fuzzedValue(FuzzedBytes& bytes, int depth)
{
    switch (depth < 100 ? bytes.number() % 10 : 0) {
    case 1:
        return bytes.text();
    case 2:
        return static_cast<std::int64_t>(bytes.word());
    case 3:
        return std::bit_cast<double>(bytes.word());
    case 4:
        return std::bit_cast<float>(static_cast<std::uint32_t>(bytes.word()));
    case 5:
        return orrenby::Array{fuzzedValue(bytes, depth + 1), fuzzedValue(bytes, depth + 1)};
    case 6:
        return fuzzedDictionary(bytes, depth);
    case 7:
        return orrenby::Date(std::bit_cast<double>(bytes.word()));
    case 8:
        return orrenby::NSSet{fuzzedValue(bytes, depth + 1)};
    case 9:
        return bytes.number() % 2 == 0;
    default:
        return {};
    }
}

inline orrenby::Log::Event fuzzedLogEvent(FuzzedBytes& bytes)
{
    auto level = bytes.text();
    auto filename = bytes.text();
    const auto line = static_cast<std::int64_t>(bytes.word());
    auto function = bytes.text();
    auto queue = bytes.text();
    auto message = bytes.text();
    return {std::move(level), std::move(filename), line, std::move(function), std::move(queue),
        std::move(message), fuzzedDictionary(bytes, 0)};
}
