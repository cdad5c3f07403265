#pragma once

/// @file
/// What a run remembers of the runs before it.

#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include "Store/StoredReport.hpp"
#include "Store/StoredSetting.hpp"
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fieldbook {

/// A report and the file that it comes from.
struct RememberedReport {
    std::string file;
    int number = 0;
    std::optional<Report> report; ///< Nothing where the file was gone or unreadable at last.
    Sending sending = Sending::notAsked;

    friend bool operator==(const RememberedReport&, const RememberedReport&) = default;
};

/// The reports and settings in a store. What is told to it is written with the next `commit`, all of it or
/// nothing; what could not be written is written with the one after.
///
/// @snippet Examples/Fieldbook/Tests/Store/MemoryTests.cpp Remembering
///
/// Use from the main thread.
class Memory {
public:
    /// Reads everything. Throws `orrenby::StoreError`. Whatever in the store no run can have written is
    /// passed over.
    explicit Memory(orrenby::Ref<orrenby::NSManagedObjectContext> context);

    /// In the order of their numbers.
    std::vector<RememberedReport> reports() const;

    /// The setting of this name, as it was typed; nothing if it was never set.
    std::optional<std::string> setting(const std::string& name) const;

    /// Runs `change`, which calls what stands below, and saves. Throws `orrenby::StoreError`.
    void commit(orrenby::UniqueFunction<void()> change);

    void put(const std::string& file, int number, const Report& report);
    /// The file is gone, or unreadable. Its number stays its own.
    void takeAway(const std::string& file);
    /// Notes how far the sending of a report is; ignored for a number that it does not know.
    void mark(int number, Sending sending);
    Sending sendingOf(const std::string& file) const;
    void set(const std::string& name, const std::string& text);

    const orrenby::Ref<orrenby::NSManagedObjectContext>& context() const { return m_context; }

private:
    using Reports = std::map<std::string, orrenby::Ref<StoredReport>>;
    using Settings = std::map<std::string, orrenby::Ref<StoredSetting>>;

    void readReports();
    void readSettings();

    orrenby::Ref<orrenby::NSManagedObjectContext> m_context;
    Reports m_reports;   ///< By file.
    Settings m_settings; ///< By name.
};

} // namespace fieldbook
