// Step 14: reading typed values out of loose JSON, and writing values of one's own as such.

#include "Orrenby/Platform/Coding/NSJSONSerialization.hpp"
#include "Orrenby/Standard/JSON/Dictionaries.hpp"
#include "Orrenby/Standard/JSON/Dictionary+JSON.hpp"
#include "Orrenby/Standard/JSON/JSONPointer.hpp"
#include "Orrenby/Standard/JSON/JSONReflection.hpp"
#include <cstdio>

using namespace orrenby;

enum class Condition { Open, Closed };

std::optional<Condition> conditionNamed(const std::string& name)
{
    if (name == "open")
        return Condition::Open;
    return name == "closed" ? std::optional(Condition::Closed) : std::nullopt;
}

struct Summary : JSONSerializable {
    std::string hut;
    bool isOpen = false;
    std::optional<int> beds;
};

Summary summaryOf(const Dictionary& hut)
{
    Summary summary;
    summary.hut = get<std::string>(hut, "name");
    summary.isOpen = map<std::string>(hut, "condition", conditionNamed) == Condition::Open;
    summary.beds = getOptional<int>(hut, "beds"); // may be missing, but must not be a text
    return summary;
}

int main()
{
    const auto reply = makeDictionary(dataFromText(R"({"huts": [
        {"name": "Almagell", "condition": "open", "beds": 120.0},
        {"name": "Bordier", "condition": "closed"},
        {"name": "Cabane", "condition": "under snow"},
        {"condition": "open"},
        {"name": "Eiger", "condition": "open", "beds": "many"}]})"));

    int failures = 0;
    for (const auto& hut : get<std::vector<Dictionary>>(reply, "huts")) {
        try {
            const auto line = NSJSONSerialization::dataWithJSONObject(json(summaryOf(hut)));
            std::printf("%s\n", textFromData(line)->c_str());
        } catch (const JSONError& error) {
            std::printf("error %d: %s\n", static_cast<int>(error.code()), error.what());
            ++failures;
        }
    }

    const auto beds = JSONPointer("/huts/0/beds").get<int>(reply);
    const auto sixth = JSONPointer("/huts/5/name").tryGet<std::string>(reply);
    std::printf("%d beds; %s\n", beds, sixth.error()->what());
    return failures == 3 && beds == 120 ? 0 : 1;
}
