#pragma once

/// @file
/// What all is wrong with a document, not only what is found first.

#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Utilities/ServiceDecoder/DecodingInspection.hpp"
#include "Orrenby/Utilities/ServiceDecoder/DecodingReport.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoder.hpp"
#include <cstddef>
#include <span>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// Decoded from any document.
template <class T> struct Inspected {
    DecodingReport report;

    static Inspected init(const Decoder& decoder)
    {
        Inspected result;
        DecodingInspection(result.report).inspect<T>(decoder.place());
        return result;
    }
};

/// The report on bytes that are no JSON.
ORRENBY_EXPORT DecodingReport reportOnUnreadable(std::span<const std::byte> data, const DecodingError& error);

} // namespace detail

/// Tells of every value that keeps `data` from being decoded as a `T`: what `decoder.decode<T>(data)` would
/// throw, and what it would throw next if that were mended.
///
/// It looks into everything that holds others: optionals, pointers, lists, maps, aggregates, described
/// classes. A type that decodes itself, by an `init` or a `Decodable` of one's own, is decoded, and only
/// what it throws first is told. The report is empty exactly when the document decodes. Bytes that are no
/// JSON are one failure.
///
/// @snippet Tests/Utilities/ServiceDecoder/DecodeReportTests.cpp Finding everything that is wrong
///
/// Throws nothing for a bad document. Linear, as decoding is; each failure costs an exception besides. Safe
/// to use from several threads.
template <class T>
DecodingReport decodeReport(std::span<const std::byte> data, const JSONDecoder& decoder = JSONDecoder())
{
    try {
        return decoder.decode<detail::Inspected<T>>(data).report;
    } catch (const DecodingError& error) {
        return detail::reportOnUnreadable(data, error);
    }
}
template <class T>
DecodingReport decodeReport(std::string_view utf8, const JSONDecoder& decoder = JSONDecoder())
{
    return decodeReport<T>(detail::bytesOf(utf8), decoder);
}

/// Tells of everything that is wrong with a response, in all members that are registered with `services`, in
/// the order of the registrations; in all else as above. Nobody is called and nothing is logged.
///
/// @snippet Tests/Utilities/ServiceDecoder/DecodeReportTests.cpp Reporting on a response
///
/// Without any registration every object is good.
ORRENBY_EXPORT DecodingReport decodeReport(const ServiceDecoder& services, std::span<const std::byte> data);
ORRENBY_EXPORT DecodingReport decodeReport(const ServiceDecoder& services, std::string_view utf8);

} // namespace orrenby
