#include "Orrenby/Utilities/ServiceDecoder/DecodeReport.hpp"

#include "Orrenby/Platform/Coding/JSONReadError.hpp"
#include "Orrenby/Platform/Coding/JSONTextForm.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceHandlers.hpp"
#include "Orrenby/Utilities/ServiceDecoder/TextExcerpt.hpp"

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// Decoded from any response.
struct InspectedResponse {
    DecodingReport report;

    static InspectedResponse init(const Decoder& decoder)
    {
        InspectedResponse result;
        detail::DecodingInspection inspection(result.report);
        try {
            inspectMembers(decoder, inspection);
        } catch (...) {
            inspection.addThrown(decoder.place());
        }
        return result;
    }

    static void inspectMembers(const Decoder& decoder, detail::DecodingInspection& inspection)
    {
        const detail::DecodingMembers members(decoder.place());
        const auto entry = decoder.userInfo()[detail::serviceHandlersKey];
        const auto* handlers = entry.get<detail::ServiceHandlers>();
        if (handlers == nullptr)
            return;
        for (const auto& handler : *handlers) {
            const auto node = members.find(handler->key().stringValue);
            if (node == JSONDocument::absent || members.place().document().kind(node) == JSONKind::Null)
                continue;
            const detail::CodingStep step{nullptr, handler->key().stringValue, -1};
            handler->inspect({members.place().session, node, &step}, inspection);
        }
    }
};

} // namespace

DecodingReport detail::reportOnUnreadable(std::span<const std::byte> data, const DecodingError& error)
{
    const auto position = error.context().position.value_or(TextPosition());
    std::string storage;
    std::string_view text;
    try {
        text = jsonTextAsUTF8(data, storage);
    } catch (const JSONReadError&) {
        text = storage; // as far as it is text
    }
    return {{{error.context().codingPath, position, textExcerpt(text, position.offset), AnyError(error)}}};
}

DecodingReport decodeReport(const ServiceDecoder& services, std::span<const std::byte> data)
{
    try {
        return services.jsonDecoder().decode<InspectedResponse>(data).report;
    } catch (const DecodingError& error) {
        return detail::reportOnUnreadable(data, error);
    }
}

DecodingReport decodeReport(const ServiceDecoder& services, std::string_view utf8)
{
    return decodeReport(services, std::as_bytes(std::span(utf8)));
}

} // namespace orrenby
