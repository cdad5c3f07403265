#include "Orrenby/Platform/Objects/Printing.hpp"

#include "Orrenby/Platform/Drawing/IndexPath.hpp"
#include "Orrenby/Platform/Drawing/Size.hpp"
#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Net/UUID.hpp"
#include "Orrenby/Utilities/EmailAddressRefusal.hpp"
#include "Orrenby/Utilities/Log/Level.hpp"
#include "Orrenby/Utilities/OrderedSet.hpp"
#include <gmock/gmock.h>
#include <iomanip>
#include <sstream>

using namespace orrenby;

namespace {

template <class T> std::string written(const T& value)
{
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

} // namespace

namespace application {

/// Not of the library, but derived from what is.
class Failure : public NSError {
public:
    Failure()
        : NSError("application", 1)
    {}
    std::string description() const { return "no path"; }
};
struct Unrelated {
    std::string description() const { return "unrelated"; }
};

template <class T>
concept Written = requires(std::ostream& stream, const T& value)
{
    stream << value;
};

} // namespace application

static_assert(!application::Written<application::Unrelated>);
static_assert(!application::Written<std::vector<Size>>);

TEST(Printing, WritesValuesToStreams)
{
    //! [Writing to a stream]
    std::ostringstream stream;
    stream << Size{2, 3} << " " << OrderedSet<std::string>{"b", "a"};

    EXPECT_EQ(stream.str(), describe(Size{2, 3}) + " [\"b\", \"a\"]");
    //! [Writing to a stream]
}

TEST(Printing, WritesThePrintedForm)
{
    const UUID uuid{};

    EXPECT_EQ(written(uuid), uuid.description());
    EXPECT_EQ(written(IndexPath()), describe(IndexPath()));
    EXPECT_EQ(written(EmailAddressRefusal{.sentence = "No."}), "No.");
    EXPECT_EQ(written(OrderedSet<int>()), "[]");
    EXPECT_EQ(written(OrderedDiff<int>{{0}, {}, {{1, 2}}}), "inserts [0], deletes [], moves [(1, 2)]");
    EXPECT_EQ(written(Log::Level(Log::Level::warning)), describe(Log::Level(Log::Level::warning)));
}

TEST(Printing, WritesAnApplicationsClassThatDerivesFromOneOfTheLibrary)
{
    EXPECT_EQ(written(application::Failure()), "no path");
}

TEST(Printing, FillsTheWidthOfTheStreamOnce)
{
    std::ostringstream stream;
    stream << std::setw(8) << std::left << OrderedSet<int>{1, 2} << "|";

    EXPECT_EQ(stream.str(), "[1, 2]  |");
}
