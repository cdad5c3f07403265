// Step 7: news by name, from anybody to anybody.

#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Utilities/Observers/NotificationObserver.hpp"
#include <cstdio>
#include <memory>

using namespace orrenby;

const NotificationName draftWasSaved = "DraftWasSaved";

struct Draft {
    const char* title;
};

// Counts how often one draft is saved.
class SaveCounter {
public:
    SaveCounter(const Ref<NotificationCenter>& center, const Ref<Draft>& draft)
        : m_observer(center)
    {
        m_observer.observe({.name = draftWasSaved, .object = draft}, [this](const Notification& news) {
            ++m_count;
            std::printf("%s: saved with %s words\n", news.object<Draft>()->title,
                describe(news.userInfo()["words"]).c_str());
        });
    }

    int count() const { return m_count; }

private:
    int m_count = 0;
    NotificationObserver m_observer; // last, so that it goes first
};

int main()
{
    const auto center = std::make_shared<NotificationCenter>(); // or the one of defaultCenter()
    const auto letter = std::make_shared<Draft>(Draft{"letter"});
    const auto poem = std::make_shared<Draft>(Draft{"poem"});
    int counted = 0;
    {
        const auto ofPoem = SaveCounter(center, poem);
        center->post(draftWasSaved, letter, {{"words", 230}}); // not of the poem
        center->post(draftWasSaved, poem, {{"words", 40}});
        center->post("DraftWasPrinted", poem); // another name
        counted = ofPoem.count();
    }
    center->post(draftWasSaved, poem, {{"words", 41}}); // nobody is left to count it

    std::printf("counted %d, observers left %zu\n", counted, center->observerCount());
    return counted == 1 && center->observerCount() == 0 ? 0 : 1;
}
