#include "Orrenby/Platform/Coding/ScalarEncoding.hpp"

#include "Orrenby/Platform/Coding/Base64.hpp"
#include "Orrenby/Platform/Coding/CodingTexts.hpp"
#include "Orrenby/Platform/Coding/Encodable.hpp"
#include "Orrenby/Platform/Coding/ISO8601.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Time/DateFormatter.hpp"
#include <cmath>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// Of the reference date of dates' own form, 2001-01-01T00:00:00Z.
constexpr double referenceSeconds = 978'307'200;

void encodeNonFinite(double value, const EncodingPlace& place)
{
    const auto* texts = place.session->options().floats.texts();
    if (texts == nullptr)
        place.throwInvalid(value, noNumberFor(value));
    encodeText(std::isnan(value) ? texts->nan
            : value > 0          ? texts->positiveInfinity
                                 : texts->negativeInfinity,
        place);
}

template <class Strategy, class Value>
void encodeCustom(const Strategy& strategy, const Value& value, const EncodingPlace& place)
{
    EncodingSlot slot(place);
    (*strategy.customCoding())(value, Encoder(slot));
    slot.close();
}

} // namespace

void endWithoutFormatter() noexcept
{
    fatalError("A strategy for dates needs a formatter", "Platform/Coding/JSONStrategies");
}

void encodeSigned(std::int64_t value, const EncodingPlace& place) { place.text().appendInteger(value); }

void encodeUnsigned(std::uint64_t value, const EncodingPlace& place) { place.text().appendUnsigned(value); }

void encodeDouble(double value, const EncodingPlace& place)
{
    if (std::isfinite(value))
        place.text().appendDouble(value);
    else
        encodeNonFinite(value, place);
}

void encodeFloat(float value, const EncodingPlace& place)
{
    if (std::isfinite(value))
        place.text().appendFloat(value);
    else
        encodeNonFinite(static_cast<double>(value), place);
}

void encodeText(std::string_view value, const EncodingPlace& place)
{
    if (!place.text().appendText(value))
        place.throwInvalid(value, std::string(notUTF8));
}

void encodeDate(Date value, const EncodingPlace& place)
{
    using Kind = JSONDateEncodingStrategy::Kind;
    const auto& strategy = place.session->options().dates;
    switch (strategy.kind()) {
    case Kind::DeferredToDate:
        return encodeDouble(value.secondsSince1970() - referenceSeconds, place);
    case Kind::SecondsSince1970:
        return encodeDouble(value.secondsSince1970(), place);
    case Kind::MillisecondsSince1970:
        return encodeDouble(value.secondsSince1970() * 1000, place);
    case Kind::ISO8601:
        if (const auto text = iso8601Text(value))
            return encodeText(*text, place);
        place.throwInvalid(value, "ISO 8601 has four digits for a year");
    case Kind::Formatted:
        return encodeText(strategy.formatter()->string(value), place);
    case Kind::Custom:
        return encodeCustom(strategy, value, place);
    }
}

void encodeData(const Data& value, const EncodingPlace& place)
{
    const auto& strategy = place.session->options().data;
    if (strategy.kind() == JSONDataEncodingStrategy::Kind::Custom)
        return encodeCustom(strategy, value, place);
    auto& text = place.text();
    if (strategy.kind() == JSONDataEncodingStrategy::Kind::Base64) {
        text.append('"');
        appendBase64(value, text);
        text.append('"');
        return;
    }
    place.open('[');
    for (std::size_t index = 0; index < value.size(); ++index) {
        if (index > 0)
            text.append(',');
        text.appendUnsigned(static_cast<std::uint64_t>(value[index]));
    }
    text.append(']');
}

void encodeUUID(const UUID& value, const EncodingPlace& place) { encodeText(value.uuidString(), place); }

void encodeURL(const URL& value, const EncodingPlace& place) { encodeText(value.absoluteString(), place); }

} // namespace orrenby::inline ORRENBY_ABI::detail
