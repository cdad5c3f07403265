/// @file
/// What it costs to tell whether a text is an e-mail address, beside ICU, whose texts are converted before
/// the clock starts; and that the cost is linear in texts that were made to hurt.

#include "Orrenby/Platform/Text/EmailPattern.hpp"
#include "Orrenby/Utilities/EmailAddressValidator.hpp"
#include <array>
#include <benchmark/benchmark.h>
#include <string>
#include <unicode/unistr.h>
#include <unicode/uregex.h>
#include <vector>

using namespace orrenby;

namespace {

const std::array<std::vector<std::string>, 3> texts{{
    // ordinary addresses
    {"ranger@hut.example.com", "first.last@example.org", "a@b.co", "someone+feed@mail.example-domain.net",
        "maria_1987@lists.university.example.edu", "no-reply@notifications.example.com", "x.y.z@example.co",
        "information@department.ministry.example"},
    // addresses that few have
    {"J.Doe@Example.com", "\u0436\u0443\u043A@\u0434\u043C.\u0440\u0444", "\"ab\"@example.com",
        "ranger@[192.168.0.1]", "first.last@MaiL.example.COM", "a@[1.2.3.IPv6:fe80]",
        "\"a\\\"b\"@hut.example.com", "\u4E2D@example.\u4E2D\u6587"},
    // none
    {"ranger", "ranger@hut", "ranger@hut..example.com", "ran ger@hut.example.com", "ranger@hut.example.com.",
        "@hut.example.com", "ranger@MAIL.example.com", "ranger@hut.example.com, other@hut.example.com"},
}};
constexpr std::array names{"ordinary", "rare", "refused"};

void orrenbyValid(benchmark::State& state, const std::vector<std::string>& addresses)
{
    for (auto _ : state)
        for (const auto& address : addresses)
            benchmark::DoNotOptimize(EmailAddress::isValid(address));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(addresses.size()));
}

void icuValid(benchmark::State& state, const std::vector<std::string>& addresses)
{
    const auto pattern = icu::UnicodeString::fromUTF8(std::string(emailPattern()));
    UErrorCode status = U_ZERO_ERROR;
    auto* const expression = uregex_open(pattern.getBuffer(), pattern.length(), 0, nullptr, &status);
    std::vector<icu::UnicodeString> units;
    for (const auto& address : addresses)
        units.push_back(icu::UnicodeString::fromUTF8(address));
    for (auto _ : state)
        for (const auto& text : units) {
            uregex_setText(expression, text.getBuffer(), text.length(), &status);
            benchmark::DoNotOptimize(uregex_matches(expression, -1, &status));
        }
    uregex_close(expression);
    if (U_FAILURE(status))
        state.SkipWithError(u_errorName(status));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(addresses.size()));
}

void explained(benchmark::State& state, const std::vector<std::string>& addresses)
{
    const EmailAddress::Validator validator;
    for (auto _ : state)
        for (const auto& address : addresses)
            benchmark::DoNotOptimize(validator.explain(address));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(addresses.size()));
}

[[maybe_unused]] const bool isRegistered = [] {
    for (std::size_t kind = 0; kind < texts.size(); ++kind) {
        const std::string name = names[kind];
        benchmark::RegisterBenchmark(("isValid/" + name).c_str(), orrenbyValid, texts[kind]);
        benchmark::RegisterBenchmark(("icu/" + name).c_str(), icuValid, texts[kind]);
        benchmark::RegisterBenchmark(("explain/" + name).c_str(), explained, texts[kind]);
    }
    return true;
}();

std::string longText(std::int64_t kind, std::size_t length)
{
    switch (kind) {
    case 0:
        return std::string(length, 'a') + "@b.co";
    case 1:
        return "\"" + std::string(length, '\\');
    case 2:
        return "a@[1.2.3.a:" + std::string(length, '\\');
    default: {
        std::string text = "a@";
        while (text.size() < length)
            text += "b-b.";
        return text;
    }
    }
}

void longTexts(benchmark::State& state)
{
    const auto text = longText(state.range(0), static_cast<std::size_t>(state.range(1)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(EmailAddress::isValid(text));
        benchmark::DoNotOptimize(emailPatternMismatch(text));
    }
    state.SetBytesProcessed(state.iterations() * state.range(1));
}
BENCHMARK(longTexts)
    ->ArgsProduct({{0, 1, 2, 3}, {50'000, 500'000, 5'000'000}})
    ->Unit(benchmark::kMillisecond);

} // namespace
