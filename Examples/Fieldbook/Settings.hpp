#pragma once

/// @file
/// What the user of a session has chosen.

#include "Catalogue.hpp"
#include "Orrenby/Platform/Objects/RawRepresentable.hpp"
#include "Orrenby/Platform/Observing/Property.hpp"
#include <array>
#include <string_view>

template <>
inline constexpr auto orrenby::allCases<fieldbook::SortOrder> = std::array{
    fieldbook::SortOrder::byNumber, fieldbook::SortOrder::bySeverity, fieldbook::SortOrder::byPlace};

namespace fieldbook {

/// The settings of a session. Whoever shows something that depends on them observes them.
///
/// Not synchronised.
class Settings : public orrenby::ObservableObject {
public:
    orrenby::Property<SortOrder, "sortOrder"> sortOrder{*this, SortOrder::byNumber};
    /// Whether cards show the text of a report.
    orrenby::Property<bool, "isDetailed"> isDetailed{*this, true};
};

/// As it is typed and shown: `number`, `severity`, `place`.
std::string_view nameOf(SortOrder order);

} // namespace fieldbook
