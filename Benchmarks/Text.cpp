/// @file
/// What small operations on text and bytes cost: digits beside the "%02x" loop, digests beside the one-shot
/// call of the cryptographic library, hashing, trimming, escaping, ranges.

#include "Orrenby/Foundation/Text.hpp"
#include "Orrenby/Foundation/Hashes.hpp"
#include "Orrenby/Platform/Digest/SHA1.hpp"
#include "Orrenby/Platform/Text/PercentEncoding.hpp"
#include "Orrenby/Platform/Text/RegularExpression.hpp"
#include "Orrenby/Platform/Text/UTF16.hpp"
#include "Orrenby/Standard/Texts.hpp"
#include <array>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <openssl/evp.h>
#include <string>

using namespace orrenby;

namespace {

Data bytes(std::int64_t count)
{
    Data result(static_cast<std::size_t>(count));
    unsigned value = 1;
    for (auto& byte : result)
        byte = static_cast<std::byte>((value = value * 1103515245U + 12345U) >> 24U);
    return result;
}

/// Words, every eighth of them not in ASCII.
std::string words(std::int64_t count)
{
    std::string text;
    for (std::int64_t word = 0; text.size() < static_cast<std::size_t>(count); ++word)
        text += word % 8 == 7 ? "Höhe & Länge " : "length and width ";
    return text;
}

std::string printedByteByByte(const Data& data)
{
    std::string text;
    for (const std::byte byte : data) {
        std::array<char, 3> digits{};
        std::snprintf(digits.data(), digits.size(), "%02x", std::to_integer<unsigned>(byte));
        text += digits.data();
    }
    return text;
}

/// Measures one call on the same subject again and again.
template <class Subject, class F> void repeat(benchmark::State& state, const Subject& subject, F operation)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(operation(subject));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(subject.size()));
}

void hexString_ours(benchmark::State& state)
{
    repeat(state, bytes(state.range(0)), [](const Data& data) { return hexString(data); });
}

void hexString_printf(benchmark::State& state) { repeat(state, bytes(state.range(0)), printedByteByByte); }

void sha1_ours(benchmark::State& state)
{
    repeat(state, bytes(state.range(0)), [](const Data& data) { return sha1(data); });
}

void sha1_oneShot(benchmark::State& state)
{
    repeat(state, bytes(state.range(0)), [](const Data& data) {
        SHA1Digest digest;
        EVP_Digest(data.data(), data.size(), reinterpret_cast<unsigned char*>(digest.data()), nullptr,
            EVP_sha1(), nullptr);
        return digest;
    });
}

void sha1Hash_text(benchmark::State& state)
{
    repeat(state, words(state.range(0)), [](const std::string& text) { return sha1Hash(text); });
}

void djb2Hash_text(benchmark::State& state)
{
    repeat(state, words(state.range(0)), [](const std::string& text) { return djb2Hash(text); });
}

void trim_text(benchmark::State& state) { repeat(state, " \n\t " + words(state.range(0)) + "\r\n", trim); }

void urlencode_text(benchmark::State& state) { repeat(state, words(state.range(0)), urlencode); }

void addingPercentEncoding_query(benchmark::State& state)
{
    repeat(state, words(state.range(0)),
        [](const std::string& text) { return addingPercentEncoding(text, CharacterSet::urlQueryAllowed()); });
}

void removingPercentEncoding_query(benchmark::State& state)
{
    repeat(state, urlencode(words(state.range(0))).value(),
        [](const std::string& text) { return removingPercentEncoding(text); });
}

void fullRange_text(benchmark::State& state)
{
    repeat(state, words(state.range(0)), [](const std::string& text) { return fullRange(text); });
}

void utf16View_made(benchmark::State& state)
{
    repeat(state, words(state.range(0)), [](const std::string& text) { return UTF16View(text).length(); });
}

void utf16View_convertsAPlace(benchmark::State& state)
{
    const auto text = words(state.range(0));
    const UTF16View view(text);
    std::size_t place = 0;
    for (auto _ : state) {
        place = (place + 7919) % view.length();
        benchmark::DoNotOptimize(view.byteOffset(place));
    }
}

void regularExpression_allMatches(benchmark::State& state)
{
    const RegularExpression expression("[A-Z]\\p{L}+");
    repeat(state, words(state.range(0)),
        [&](const std::string& text) { return expression.allMatches(text).size(); });
}

} // namespace

BENCHMARK(hexString_ours)->Arg(16)->Arg(1024);
BENCHMARK(hexString_printf)->Arg(16)->Arg(1024);
BENCHMARK(sha1_ours)->Arg(16)->Arg(1024);
BENCHMARK(sha1_oneShot)->Arg(16)->Arg(1024);
BENCHMARK(sha1Hash_text)->Arg(16)->Arg(1024);
BENCHMARK(djb2Hash_text)->Arg(16)->Arg(1024);
BENCHMARK(trim_text)->Arg(16)->Arg(1024);
BENCHMARK(urlencode_text)->Arg(16)->Arg(1024);
BENCHMARK(addingPercentEncoding_query)->Arg(1024);
BENCHMARK(removingPercentEncoding_query)->Arg(1024);
BENCHMARK(fullRange_text)->Arg(1024);
BENCHMARK(utf16View_made)->Arg(1024);
BENCHMARK(utf16View_convertsAPlace)->Arg(1024)->Arg(65536);
BENCHMARK(regularExpression_allMatches)->Arg(1024);
