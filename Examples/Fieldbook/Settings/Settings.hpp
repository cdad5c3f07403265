#pragma once

/// @file
/// What the user of a session has chosen.

#include "Feed/Catalogue.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include "Orrenby/Platform/Observing/Property.hpp"
#include "Report/NamedCases.hpp"
#include <array>
#include <string>
#include <string_view>

namespace fieldbook {

/// As it is typed and shown: `number`, `severity`, `place`.
std::string_view nameOf(SortOrder order);

} // namespace fieldbook

template <>
inline constexpr auto orrenby::allCases<fieldbook::SortOrder> = std::array{
    fieldbook::SortOrder::byNumber, fieldbook::SortOrder::bySeverity, fieldbook::SortOrder::byPlace};

template <>
struct orrenby::RawRepresentation<fieldbook::SortOrder> : fieldbook::NamedCases<fieldbook::SortOrder> {};

/// For people who read that their text is none.
template <> struct orrenby::TypeNameOf<fieldbook::SortOrder> {
    static std::string text() { return "order (number, severity or place)"; }
};

namespace fieldbook {

/// The settings of a session. Whoever shows something that depends on them observes them.
///
/// Not synchronised.
class Settings : public orrenby::ObservableObject {
public:
    orrenby::Property<SortOrder, "sortOrder"> sortOrder{*this, SortOrder::byNumber};
    /// Whether cards show the text of a report.
    orrenby::Property<bool, "isDetailed"> isDetailed{*this, true};
    /// In which dates are shown, as people name it; empty for that of the machine.
    orrenby::Property<std::string, "language"> language{*this};
};

} // namespace fieldbook
