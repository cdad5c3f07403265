// Saving and fetching objects of a store, beside the same prepared statements used by hand, which read every
// column into a vector of plain structs.

#include "Benchmarks/Support/Allocations.hpp"
#include "Orrenby/Platform/Store/ManagedMembers.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include "Tests/Support/TemporaryFolder.hpp"
#include <benchmark/benchmark.h>
#include <cstdint>
#include <ctime>
#include <optional>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace orrenby;

constexpr std::int64_t count = 10'000;

/// A report as somebody writes it down.
struct PlainReport {
    std::int64_t key = 0;
    std::int64_t version = 0;
    std::string title;
    std::string note;
    std::int64_t number = 0;
    double level = 0;
    bool isUrgent = false;
    double createdAt = 0;
};

class Report : public NSManagedObject {
public:
    using NSManagedObject::NSManagedObject;

    Attribute<std::string, "title"> title{*this};
    Attribute<std::string, "note"> note{*this};
    Attribute<std::int64_t, "number"> number{*this};
    Attribute<double, "level"> level{*this};
    Attribute<bool, "isUrgent"> isUrgent{*this};
    Attribute<Date, "createdAt"> createdAt{*this};
};

Ref<const NSManagedObjectModel> reportModel()
{
    return NSManagedObjectModel::make(1,
        {{.name = "Report",
            .attributes = {{.name = "title"}, {.name = "note"},
                {.name = "number", .kind = AttributeKind::Int},
                {.name = "level", .kind = AttributeKind::Double},
                {.name = "isUrgent", .kind = AttributeKind::Bool},
                {.name = "createdAt", .kind = AttributeKind::Date}},
            .objectClass = managedObjectClass<Report>}});
}

/// A file of its own in memory or on the disk, which goes away at the end.
class Place {
public:
    explicit Place(bool isOnDisk)
    {
        if (isOnDisk)
            m_folder.emplace();
    }

    std::string path() const { return m_folder ? m_folder->file("store") : std::string(); }

private:
    std::optional<tests::TemporaryFolder> m_folder;
};

PlainReport plainReport(std::int64_t number)
{
    return {.key = number + 1,
        .version = 1,
        .title = "Gauge " + std::to_string(number),
        .note = "The river is rising since yesterday at gauge " + std::to_string(number),
        .number = number,
        .level = static_cast<double>(number) / 7,
        .isUrgent = number % 3 == 0,
        .createdAt = 1.7e9 + static_cast<double>(number)};
}

void insertReports(const Ref<NSManagedObjectContext>& context)
{
    for (std::int64_t number = 0; number < count; ++number) {
        auto plain = plainReport(number);
        const auto report = context->insert<Report>("Report");
        report->title = std::move(plain.title);
        report->note = std::move(plain.note);
        report->number = plain.number;
        report->level = plain.level;
        report->isUrgent = plain.isUrgent;
        report->createdAt = Date(plain.createdAt);
    }
}

/// What reading everything comes to, the same for both.
struct Sum {
    std::size_t characters = 0;
    std::int64_t numbers = 0;
    double levels = 0;

    friend bool operator==(const Sum&, const Sum&) = default;
};

/// SQLite, by hand.
class Raw {
public:
    explicit Raw(const std::string& path)
    {
        check(sqlite3_open_v2(path.empty() ? ":memory:" : path.c_str(), &m_connection,
            SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE,
            nullptr));
        run("PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL; PRAGMA foreign_keys = ON");
        run("CREATE TABLE IF NOT EXISTS Report (_key INTEGER PRIMARY KEY, _version INTEGER NOT NULL, "
            "title TEXT NOT NULL, note TEXT NOT NULL, number INTEGER NOT NULL, level REAL NOT NULL, "
            "isUrgent INTEGER NOT NULL, createdAt REAL NOT NULL) STRICT");
        prepare(m_insert,
            "INSERT INTO Report (_key, _version, title, note, number, level, isUrgent, createdAt) "
            "VALUES (?, 1, ?, ?, ?, ?, ?, ?)");
        prepare(m_select,
            "SELECT _key, _version, title, note, number, level, isUrgent, createdAt FROM Report "
            "ORDER BY _key LIMIT ? OFFSET ?");
    }
    Raw(const Raw&) = delete;
    Raw& operator=(const Raw&) = delete;
    ~Raw()
    {
        sqlite3_finalize(m_insert);
        sqlite3_finalize(m_select);
        sqlite3_close(m_connection);
    }

    void save(const std::vector<PlainReport>& reports)
    {
        run("BEGIN IMMEDIATE");
        for (const auto& report : reports) {
            sqlite3_bind_int64(m_insert, 1, report.key);
            bindText(2, report.title);
            bindText(3, report.note);
            sqlite3_bind_int64(m_insert, 4, report.number);
            sqlite3_bind_double(m_insert, 5, report.level);
            sqlite3_bind_int64(m_insert, 6, report.isUrgent ? 1 : 0);
            sqlite3_bind_double(m_insert, 7, report.createdAt);
            if (sqlite3_step(m_insert) != SQLITE_DONE)
                throw std::runtime_error(sqlite3_errmsg(m_connection));
            check(sqlite3_reset(m_insert));
        }
        run("COMMIT");
    }

    std::vector<PlainReport> fetch()
    {
        std::vector<PlainReport> reports;
        sqlite3_bind_int64(m_select, 1, -1);
        sqlite3_bind_int64(m_select, 2, 0);
        while (sqlite3_step(m_select) == SQLITE_ROW)
            reports.push_back({.key = sqlite3_column_int64(m_select, 0),
                .version = sqlite3_column_int64(m_select, 1),
                .title = text(2),
                .note = text(3),
                .number = sqlite3_column_int64(m_select, 4),
                .level = sqlite3_column_double(m_select, 5),
                .isUrgent = sqlite3_column_int64(m_select, 6) != 0,
                .createdAt = sqlite3_column_double(m_select, 7)});
        check(sqlite3_reset(m_select));
        return reports;
    }

private:
    void check(int resultCode) const
    {
        if (resultCode != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(m_connection));
    }
    void run(const char* sql) { check(sqlite3_exec(m_connection, sql, nullptr, nullptr, nullptr)); }
    void prepare(sqlite3_stmt*& statement, const char* sql)
    {
        check(sqlite3_prepare_v3(m_connection, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr));
    }
    void bindText(int position, const std::string& text)
    {
        sqlite3_bind_text64(m_insert, position, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
    }
    std::string text(int column) const
    {
        const auto* const begin = reinterpret_cast<const char*>(sqlite3_column_text(m_select, column));
        return {begin, static_cast<std::size_t>(sqlite3_column_bytes(m_select, column))};
    }

    sqlite3* m_connection = nullptr;
    sqlite3_stmt* m_insert = nullptr;
    sqlite3_stmt* m_select = nullptr;
};

double processorSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// Counts what this thread spends, so that neither other programs nor the disk blur the comparison. Never
/// inlined: whoever counts instructions begins and ends here.
template <class Work> [[gnu::noinline]] void timeOnly(benchmark::State& state, Work&& work)
{
    const auto begin = processorSeconds();
    work();
    state.SetIterationTime(processorSeconds() - begin);
}

Ref<PersistentStore> openStore(const Place& place)
{
    return PersistentStore::open(
        reportModel(), {.path = place.path(), .synchronous = StoreSynchronous::Normal});
}

void saveObjects(benchmark::State& state)
{
    for (auto _ : state) {
        const Place place(state.range(0) != 0);
        const auto context = make<NSManagedObjectContext>(openStore(place));
        insertReports(context);
        timeOnly(state, [&] { context->save(); });
    }
}

void saveRaw(benchmark::State& state)
{
    for (auto _ : state) {
        const Place place(state.range(0) != 0);
        std::vector<PlainReport> reports;
        for (std::int64_t number = 0; number < count; ++number)
            reports.push_back(plainReport(number));
        Raw raw(place.path());
        timeOnly(state, [&] { raw.save(reports); });
    }
}

Sum sumOf(const std::vector<PlainReport>& reports)
{
    Sum sum;
    for (const auto& report : reports) {
        sum.characters += report.title.size() + report.note.size();
        sum.numbers += report.number + (report.isUrgent ? 1 : 0);
        sum.levels += report.level + report.createdAt;
    }
    return sum;
}

Sum sumOf(const std::vector<Ref<Report>>& reports)
{
    Sum sum;
    for (const auto& report : reports) {
        sum.characters += report->title.get().size() + report->note.get().size();
        sum.numbers += report->number.get() + (report->isUrgent.get() ? 1 : 0);
        sum.levels += report->level.get() + report->createdAt.get().secondsSince1970();
    }
    return sum;
}

Sum expectedSum()
{
    std::vector<PlainReport> reports;
    for (std::int64_t number = 0; number < count; ++number)
        reports.push_back(plainReport(number));
    return sumOf(reports);
}

void report(benchmark::State& state, const Sum& sum, const benchmarks::Allocations& held)
{
    if (sum != expectedSum())
        state.SkipWithError("other values came back");
    state.counters["bytes held per object"] = static_cast<double>(held.bytes) / count;
    state.counters["blocks per object"] = static_cast<double>(held.blocks) / count;
}

void fetchObjects(benchmark::State& state)
{
    const Place place(state.range(0) != 0);
    const auto store = openStore(place);
    const auto writer = make<NSManagedObjectContext>(store);
    insertReports(writer);
    writer->save();
    Sum sum;
    benchmarks::Allocations held;
    for (auto _ : state) {
        const auto before = benchmarks::allocations();
        const auto context = make<NSManagedObjectContext>(store);
        std::vector<Ref<Report>> reports;
        timeOnly(state, [&] {
            reports = context->fetch<Report>({.entity = "Report"});
            sum = sumOf(reports);
        });
        held = benchmarks::allocations() - before;
    }
    report(state, sum, held);
}

void fetchRaw(benchmark::State& state)
{
    const Place place(state.range(0) != 0);
    Raw raw(place.path());
    std::vector<PlainReport> written;
    for (std::int64_t number = 0; number < count; ++number)
        written.push_back(plainReport(number));
    raw.save(written);
    Sum sum;
    benchmarks::Allocations held;
    for (auto _ : state) {
        const auto before = benchmarks::allocations();
        std::vector<PlainReport> reports;
        timeOnly(state, [&] {
            reports = raw.fetch();
            sum = sumOf(reports);
        });
        held = benchmarks::allocations() - before;
    }
    report(state, sum, held);
}

} // namespace

BENCHMARK(saveRaw)->ArgName("onDisk")->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(saveObjects)->ArgName("onDisk")->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(fetchRaw)->ArgName("onDisk")->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(fetchObjects)->ArgName("onDisk")->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond);
