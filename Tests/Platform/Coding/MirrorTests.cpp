#include "Orrenby/Platform/Coding/Mirror.hpp"

#include "Orrenby/Platform/Coding/DescribedMirror.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include <boost/describe/class.hpp>
#include <gmock/gmock.h>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

struct Place {
    std::string name;
    std::optional<double> height;
    std::vector<int> codes;
    bool default_ = false;
};

struct Marker {};
struct Marked : Marker {
    int number = 0;
};
struct HoldsMarked : Marker {
    Marked inner;
    Any any;
};
struct HoldsAny : Marker {
    Any any;
};

//! [Looking at a described class]
class Shape {
    std::string m_name = "shape";
    BOOST_DESCRIBE_CLASS(Shape, (), (), (), (m_name))
};

class Circle : public Shape {
    double m_radius = 2;

public:
    bool isFilled = true;
    BOOST_DESCRIBE_CLASS(Circle, (Shape), (isFilled), (), (m_radius))
};

std::vector<std::string> labels(const Circle& circle)
{
    std::vector<std::string> result;
    const Mirror whole(circle);
    for (const Mirror* mirror = &whole; mirror != nullptr; mirror = mirror->superclassMirror())
        for (const auto& child : mirror->children())
            result.push_back(*child.label);
    return result;
}
//! [Looking at a described class]

} // namespace

TEST(Mirror, ShowsTheFieldsOfAnAggregate)
{
    //! [Looking at stored properties]
    const Mirror mirror(Place{"Summit", std::nullopt, {1, 2}, true});

    std::string text;
    for (const auto& [label, value] : mirror.children())
        text += *label + "=" + describe(value) + " ";
    //! [Looking at stored properties]

    EXPECT_EQ(text, "name=Summit height=<null> codes=[1, 2] default=true ");
    EXPECT_EQ(mirror.subjectTypeName(), "Place");
    EXPECT_EQ(mirror.superclassMirror(), nullptr);
}

TEST(Mirror, ShowsADescribedClassAndItsSuperclass)
{
    EXPECT_THAT(labels(Circle()), ElementsAre("radius", "isFilled", "name"));
    EXPECT_EQ(Mirror(Circle()).superclassMirror()->subjectTypeName(), "Shape");
}

TEST(Mirror, SeesThroughABaseWithoutFields)
{
    Marked marked;
    marked.number = 5;

    EXPECT_THAT(Mirror(marked).children(), ElementsAre(Mirror::Child{"number", 5}));
}

TEST(Mirror, TellsABaseFromAFieldThatTheBaseCouldInitialise)
{
    HoldsAny holder;
    holder.any = 5;

    EXPECT_THAT(Mirror(holder).children(), ElementsAre(Mirror::Child{"any", 5}));
    EXPECT_THAT(Mirror(HoldsMarked()).children(),
        ElementsAre(testing::Field(&Mirror::Child::label, "inner"), Mirror::Child{"any", Any()}));
}

TEST(Mirror, ShowsNoChildrenOfOtherTypes)
{
    EXPECT_THAT(Mirror(5).children(), IsEmpty());
    EXPECT_THAT(Mirror(std::string("a")).children(), IsEmpty());
    EXPECT_THAT(Mirror(Array{1}).children(), IsEmpty());
    EXPECT_THAT(Mirror(Marker()).children(), IsEmpty());
}
