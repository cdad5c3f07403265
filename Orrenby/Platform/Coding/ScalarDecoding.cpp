#include "Orrenby/Platform/Coding/ScalarDecoding.hpp"

#include "Orrenby/Platform/Coding/Base64.hpp"
#include "Orrenby/Platform/Coding/CodingTexts.hpp"
#include "Orrenby/Platform/Coding/Decodable.hpp"
#include "Orrenby/Platform/Coding/ISO8601.hpp"
#include "Orrenby/Platform/Coding/JSONNumber.hpp"
#include "Orrenby/Platform/Time/DateFormatter.hpp"
#include <limits>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// Of the reference date of dates' own form, 2001-01-01T00:00:00Z.
constexpr double referenceSeconds = 978'307'200;

bool isKind(const Decoder& decoder, JSONKind kind) { return decoder.kind() == kind; }

std::string_view textOf(const Decoder& decoder)
{
    const auto& place = decoder.place();
    return place.document().text(place.node);
}

[[noreturn]] void throwCorrupted(const Decoder& decoder, std::string_view message)
{
    throw DecodingError::dataCorrupted(decoder.errorContext(message));
}

[[noreturn]] void throwDoesNotFit(const Decoder& decoder, std::string_view typeName)
{
    throwCorrupted(decoder, numberDoesNotFit(textOf(decoder), typeName));
}

template <class T> T decodeFloating(const Decoder& decoder, std::optional<T> (*read)(std::string_view))
{
    if (isKind(decoder, JSONKind::Number)) {
        if (const auto value = read(textOf(decoder)))
            return *value;
        throwDoesNotFit(decoder, typeName<T>());
    }
    const auto* texts = decoder.place().session->options().floats.texts();
    if (texts != nullptr && isKind(decoder, JSONKind::Text)) {
        const auto text = textOf(decoder);
        if (text == texts->positiveInfinity)
            return std::numeric_limits<T>::infinity();
        if (text == texts->negativeInfinity)
            return -std::numeric_limits<T>::infinity();
        if (text == texts->nan)
            return std::numeric_limits<T>::quiet_NaN();
    }
    decoder.place().throwMismatch(typeName<T>());
}

} // namespace

bool decodeBool(const Decoder& decoder)
{
    if (!isKind(decoder, JSONKind::Bool))
        decoder.place().throwMismatch("Bool");
    return decoder.place().document().boolean(decoder.place().node);
}

std::int64_t decodeSigned(const Decoder& decoder, std::size_t width)
{
    if (!isKind(decoder, JSONKind::Number))
        decoder.place().throwMismatch(integerTypeName(width, true));
    const auto value = jsonInteger(textOf(decoder));
    const auto largest = std::numeric_limits<std::int64_t>::max() >> (64 - 8 * width);
    if (!value || *value > largest || *value < -largest - 1)
        throwDoesNotFit(decoder, integerTypeName(width, true));
    return *value;
}

std::uint64_t decodeUnsigned(const Decoder& decoder, std::size_t width)
{
    if (!isKind(decoder, JSONKind::Number))
        decoder.place().throwMismatch(integerTypeName(width, false));
    const auto value = jsonUnsigned(textOf(decoder));
    if (!value || *value > std::numeric_limits<std::uint64_t>::max() >> (64 - 8 * width))
        throwDoesNotFit(decoder, integerTypeName(width, false));
    return *value;
}

double decodeDouble(const Decoder& decoder) { return decodeFloating<double>(decoder, jsonDouble); }

float decodeFloat(const Decoder& decoder) { return decodeFloating<float>(decoder, jsonFloat); }

std::string_view decodeText(const Decoder& decoder)
{
    if (!isKind(decoder, JSONKind::Text))
        decoder.place().throwMismatch("String");
    return textOf(decoder);
}

Date decodeDate(const Decoder& decoder)
{
    using Kind = JSONDateDecodingStrategy::Kind;
    const auto& strategy = decoder.place().session->options().dates;
    // A null is missing as a date, whatever a date is written as.
    if (isKind(decoder, JSONKind::Null) && strategy.kind() != Kind::Custom)
        decoder.place().throwMismatch("Date");
    switch (strategy.kind()) {
    case Kind::DeferredToDate:
        return Date(decodeDouble(decoder) + referenceSeconds);
    case Kind::SecondsSince1970:
        return Date(decodeDouble(decoder));
    case Kind::MillisecondsSince1970:
        return Date(decodeDouble(decoder) / 1000);
    case Kind::ISO8601: {
        if (const auto date = dateFromISO8601(decodeText(decoder)))
            return *date;
        throwCorrupted(decoder, "Expected a date and time in the form of ISO 8601");
    }
    case Kind::Formatted: {
        if (const auto date = strategy.formatter()->date(decodeText(decoder)))
            return *date;
        throwCorrupted(decoder, "Expected a date in the form of the strategy's formatter");
    }
    case Kind::Custom:
        return (*strategy.customCoding())(decoder);
    }
    throwCorrupted(decoder, "Expected a date");
}

Data decodeData(const Decoder& decoder)
{
    using Kind = JSONDataDecodingStrategy::Kind;
    const auto& strategy = decoder.place().session->options().data;
    if (const auto* custom = strategy.customCoding())
        return (*custom)(decoder);
    if (isKind(decoder, JSONKind::Null))
        decoder.place().throwMismatch("Data");
    if (strategy.kind() == Kind::Base64) {
        if (auto data = dataFromBase64(decodeText(decoder)))
            return *std::move(data);
        throwCorrupted(decoder, "Expected a text in Base64");
    }
    Data data;
    auto list = decoder.unkeyedContainer();
    data.reserve(list.count());
    while (!list.isAtEnd())
        data.push_back(static_cast<std::byte>(list.decode<std::uint8_t>()));
    return data;
}

UUID decodeUUID(const Decoder& decoder)
{
    if (isKind(decoder, JSONKind::Null))
        decoder.place().throwMismatch("UUID");
    if (const auto uuid = UUID::make(decodeText(decoder)))
        return *uuid;
    throwCorrupted(decoder, "Expected the text of a UUID");
}

URL decodeURL(const Decoder& decoder)
{
    if (isKind(decoder, JSONKind::Null))
        decoder.place().throwMismatch("URL");
    if (auto url = URL::make(decodeText(decoder)))
        return *std::move(url);
    throwCorrupted(decoder, "Expected the text of a URL");
}

void throwNoValueFor(const Decoder& decoder, std::string_view typeName, std::string_view rawValue)
{
    throwCorrupted(decoder, "No " + std::string(typeName) + " has the raw value " + std::string(rawValue));
}

} // namespace orrenby::inline ORRENBY_ABI::detail
