#pragma once

/// @file
/// Looking for all that does not decode. Not in the umbrella header: part of the reports.

#include "Orrenby/Platform/Coding/Decodable.hpp"
#include "Orrenby/Platform/Coding/FieldsDecoding.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/ServiceDecoder/DecodingReport.hpp"
#include <string_view>
#include <tuple>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI::detail {

/// A type that says how it holds others.
template <class T>
concept DecodedInForm = requires
{
    Decodable<T>::form;
};

/// Decodes what holds no others, and looks at each of those that a value holds; adds what throws to a report.
///
/// Not synchronised.
class ORRENBY_EXPORT DecodingInspection {
public:
    explicit DecodingInspection(DecodingReport& report) noexcept
        : m_report(report)
    {}

    template <class T> void inspect(const DecodingPlace& place)
    {
        static_assert(DecodableType<T>,
            "T cannot be decoded: give it a static init(const Decoder&), or include AggregateCoding.hpp or "
            "DescribedCoding.hpp");
        if constexpr (!DecodedInForm<T>)
            decodeWhole<T>(place);
        else if constexpr (Decodable<T>::form == DecodedForm::Nullable)
            inspectNullable<T>(place);
        else if constexpr (Decodable<T>::form == DecodedForm::Fields)
            inspectFields<T>(place);
        else if constexpr (Decodable<T>::form == DecodedForm::Map)
            inspectMap<T>(place);
        else
            inspectList<T>(place);
    }

    /// Adds the exception that is being handled.
    void addThrown(const DecodingPlace& place);

private:
    /// A value of a wrong kind gets here too: that decoding it fails is what is to be found out.
    template <class T> void decodeWhole(const DecodingPlace& place)
    {
        try {
            static_cast<void>(decodeAt<T>(place));
        } catch (...) {
            addThrown(place);
        }
    }

    template <class T> void inspectNullable(const DecodingPlace& place)
    {
        if (place.kind() == JSONKind::Null)
            return;
        if constexpr (requires { typename T::element_type; })
            inspect<std::remove_const_t<typename T::element_type>>(place);
        else
            inspect<typename T::value_type>(place);
    }

    template <class T> void inspectList(const DecodingPlace& place)
    {
        if (place.kind() != JSONKind::List)
            return decodeWhole<T>(place);
        const auto& document = place.document();
        if constexpr (Decodable<T>::form == DecodedForm::Array)
            if (document.count(place.node) != std::tuple_size_v<T>)
                decodeWhole<T>(place);
        CodingStep step{place.path, {}, 0};
        const auto end = document.endOf(place.node);
        for (auto node = JSONDocument::firstIn(place.node); node < end; node = document.next(node)) {
            inspect<typename T::value_type>({place.session, node, &step});
            ++step.index;
        }
    }

    template <class T> void inspectMap(const DecodingPlace& place)
    {
        if (place.kind() != JSONKind::Object)
            return decodeWhole<T>(place);
        const auto& document = place.document();
        const auto end = document.endOf(place.node);
        for (auto node = JSONDocument::firstIn(place.node); node < end; node = document.next(node)) {
            const CodingStep step{place.path, document.key(node), -1};
            const DecodingPlace member{place.session, node, &step};
            try {
                static_cast<void>(mapKey<typename T::key_type>(member, document.key(node)));
            } catch (...) {
                addThrown(member);
            }
            inspect<typename T::mapped_type>(member);
        }
    }

    template <class T> void inspectFields(const DecodingPlace& place)
    {
        if (place.kind() != JSONKind::Object)
            return decodeWhole<T>(place);
        const DecodingMembers members(place);
        Decodable<T>::visitFields([&]<class Field>(std::type_identity<Field>, std::string_view key) {
            const auto node = members.find(key);
            if (node == JSONDocument::absent) {
                if constexpr (!mayBeMissing<Field>)
                    addMissing(members, key);
                return;
            }
            const CodingStep step{place.path, key, -1};
            inspect<Field>({place.session, node, &step});
        });
    }

    void addMissing(const DecodingMembers& members, std::string_view key);

    DecodingReport& m_report;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
