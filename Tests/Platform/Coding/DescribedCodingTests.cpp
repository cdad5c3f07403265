#include "Orrenby/Platform/Coding/DescribedCoding.hpp"

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include <boost/describe/class.hpp>
#include <gmock/gmock.h>

using namespace orrenby;

namespace {

//! [Describing a class]
class Animal {
public:
    const std::string& name() const { return m_name; }

protected:
    std::string m_name;
    BOOST_DESCRIBE_CLASS(Animal, (), (), (m_name), ())
};

class Dog : public Animal {
public:
    int age() const { return m_age; }

private:
    int m_age = 0;

public:
    std::optional<bool> isGood;
    BOOST_DESCRIBE_CLASS(Dog, (Animal), (isGood), (), (m_age))
};
//! [Describing a class]

struct Tagged {
    std::string tag;
};
BOOST_DESCRIBE_STRUCT(Tagged, (), (tag))

class Puppy : public Dog, public Tagged {
public:
    const std::vector<Dog>& parents() const { return m_parents; }

private:
    std::vector<Dog> m_parents;
    BOOST_DESCRIBE_CLASS(Puppy, (Dog, Tagged), (), (), (m_parents))
};

struct Kennel {
    std::vector<Dog> dogs;
};

} // namespace

TEST(DescribedCoding, CodesPrivateFieldsAndThoseOfBases)
{
    const std::string_view text = R"({"name":"Rex","age":4,"isGood":true})";
    const auto dog = JSONDecoder().decode<Dog>(text);

    EXPECT_EQ(dog.name(), "Rex");
    EXPECT_EQ(dog.age(), 4);
    EXPECT_EQ(dog.isGood, true);
    EXPECT_EQ(JSONEncoder().encodeText(dog), text);
}

TEST(DescribedCoding, LetsOptionalFieldsBeMissing)
{
    const auto dog = JSONDecoder().decode<Dog>(R"({"age":1,"name":""})");

    EXPECT_EQ(dog.isGood, std::nullopt);
    EXPECT_EQ(JSONEncoder().encodeText(dog), R"({"name":"","age":1})");
}

TEST(DescribedCoding, NamesThePathOfWhatIsWrong)
{
    try {
        JSONDecoder().decode<Kennel>(R"({"dogs":[{"name":"Rex","age":"four"}]})");
        FAIL();
    } catch (const DecodingError& error) {
        EXPECT_EQ(error.description(),
            "typeMismatch(Int32, at dogs > Index 0 > age, line 1, column 30: Expected Int32 but found a text)");
    }
}

TEST(DescribedCoding, CodesEachOfSeveralBases)
{
    const std::string_view text
        = R"({"name":"Rex","age":0,"tag":"red","parents":[{"name":"Ada","age":5,"isGood":false}]})";
    const auto puppy = JSONDecoder().decode<Puppy>(text);

    EXPECT_EQ(puppy.name(), "Rex");
    EXPECT_EQ(puppy.tag, "red");
    EXPECT_EQ(puppy.parents().at(0).age(), 5);
    EXPECT_EQ(JSONEncoder().encodeText(puppy), text);
}
