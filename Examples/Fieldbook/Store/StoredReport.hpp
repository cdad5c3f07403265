#pragma once

/// @file
/// A report as the store keeps it.

#include "Orrenby/Foundation/BaseManagedObject.hpp"
#include "Orrenby/Platform/Store/ManagedMembers.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include "Report/Report.hpp"
#include <cstdint>
#include <optional>
#include <string>

namespace fieldbook {

/// How far the sending of a report is.
enum class Sending { notAsked, asked, done };

/// What a file said last, and the number that people know it by. It outlives its file, so that no other
/// report ever gets its number.
///
/// Use from the queue of its context.
class StoredReport : public orrenby::BaseManagedObject {
public:
    using BaseManagedObject::BaseManagedObject;

    static constexpr auto entityName = "Report";

    orrenby::Attribute<std::string, "file"> file{*this};
    orrenby::Attribute<std::int64_t, "number"> number{*this};
    orrenby::Attribute<std::string, "title"> title{*this};
    orrenby::Attribute<std::string, "place"> place{*this};
    orrenby::Attribute<std::string, "observer"> observer{*this};
    /// Its name.
    orrenby::Attribute<std::string, "severity"> severity{*this};
    orrenby::Attribute<std::optional<std::string>, "body"> body{*this};
    orrenby::Attribute<std::optional<orrenby::Date>, "date"> date{*this};
    /// Whether the file was there and readable.
    orrenby::Attribute<bool, "isThere"> isThere{*this};
    /// A `Sending`.
    orrenby::Attribute<std::int64_t, "sending"> sending{*this};

    void take(const Report& report);

    /// The report; nothing for what no report file could say, because somebody else wrote into the store.
    std::optional<Report> report() const;
};

} // namespace fieldbook
