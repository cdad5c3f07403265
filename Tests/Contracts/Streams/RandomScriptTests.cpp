#include "Tests/Support/StreamEngines.hpp"

#include <algorithm>
#include <functional>
#include <map>
#include <random>

using namespace orrenby;

/// Random programs that send, subscribe, cancel and finish from outside and from inside callbacks, run
/// against a subject and against a few lines that say plainly what a subject does.
namespace {

using Subscriber = int;

/// What a subject does, written without any care for cost.
class PlainSubject {
public:
    std::function<void(Subscriber, int)> onValue;

    explicit PlainSubject(bool replays)
        : m_replays(replays)
    {}

    void send(int value)
    {
        if (m_hasEnded)
            return;
        m_current = value;
        m_pending.push_back({value, m_live});
        deliverPending();
    }

    void finish() { m_hasEnded = true; }

    void subscribe(Subscriber subscriber)
    {
        if (m_hasEnded)
            return;
        m_live.push_back(subscriber);
        if (!m_replays)
            return;
        const auto wasDelivering = std::exchange(m_isDelivering, true);
        onValue(subscriber, m_current);
        m_isDelivering = wasDelivering;
        deliverPending();
    }

    void cancel(Subscriber subscriber) { std::erase(m_live, subscriber); }

private:
    struct Pending {
        int value;
        std::vector<Subscriber> subscribers; // those who were there when it was sent
    };

    void deliverPending()
    {
        if (std::exchange(m_isDelivering, true))
            return; // whoever delivers comes to it
        while (!m_pending.empty()) {
            const auto next = m_pending.front();
            m_pending.erase(m_pending.begin());
            for (const auto subscriber : next.subscribers)
                if (std::find(m_live.begin(), m_live.end(), subscriber) != m_live.end())
                    onValue(subscriber, next.value);
        }
        m_isDelivering = false;
    }

    const bool m_replays;
    int m_current = 0;
    bool m_isDelivering = false;
    bool m_hasEnded = false;
    std::vector<Subscriber> m_live;
    std::vector<Pending> m_pending;
};

/// The same operations on a subject of the library.
template <class Subject> class RealSubject {
public:
    std::function<void(Subscriber, int)> onValue;

    explicit RealSubject(const Subject& subject)
        : m_subject(subject)
    {}

    void send(int value) { m_subject.send(value); }
    void finish() { m_subject.send(Subject::Completion::finished()); }
    void cancel(Subscriber subscriber) { m_handles.erase(subscriber); }

    void subscribe(Subscriber subscriber)
    {
        auto handle = m_subject.asPublisher().bind(
            [this, subscriber](int value) { onValue(subscriber, value); });
        m_handles.insert_or_assign(subscriber, std::move(handle));
    }

private:
    const Subject m_subject;
    std::map<Subscriber, Streams::AnyCancellable> m_handles;
};

/// Plays one random program and notes who received what.
template <class Subject> std::string play(Subject& subject, unsigned seed)
{
    auto random = std::mt19937(seed);
    auto notes = std::string();
    auto steps = 60;
    auto subscribers = 0;
    auto values = 0;
    auto cancellable = std::vector<Subscriber>();
    const auto step = [&] {
        const auto choice = random() % 100;
        if (choice < 40)
            subject.send(++values);
        else if (choice < 70) {
            const auto subscriber = ++subscribers;
            subject.subscribe(subscriber);
            cancellable.push_back(subscriber); // its handle exists from here on
        } else if (choice < 98) {
            if (!cancellable.empty())
                subject.cancel(cancellable[random() % cancellable.size()]);
        } else
            subject.finish();
    };
    subject.onValue = [&](Subscriber subscriber, int value) {
        notes += std::to_string(subscriber) + ":" + std::to_string(value) + " ";
        for (auto more = random() % 3; more > 0 && steps > 0; --more) {
            --steps;
            step();
        }
    };
    for (; steps > 0; --steps)
        step();
    return notes;
}

class RandomScripts : public orrenby::testing::BothEngines {};

constexpr auto seedCount = 3'000U;

TEST_P(RandomScripts, ACurrentValueSubjectDoesWhatThePlainOneDoes)
{
    for (auto seed = 0U; seed < seedCount; ++seed) {
        auto plain = PlainSubject(true);
        auto real = RealSubject(Streams::CurrentValueSubject<int, Never>(0));

        ASSERT_EQ(play(real, seed), play(plain, seed)) << "seed " << seed;
    }
    EXPECT_EQ(detail::Subscription::liveCount(), 0);
}

TEST_P(RandomScripts, APassthroughSubjectDoesWhatThePlainOneDoes)
{
    for (auto seed = 0U; seed < seedCount; ++seed) {
        auto plain = PlainSubject(false);
        auto real = RealSubject(Streams::PassthroughSubject<int, Never>());

        ASSERT_EQ(play(real, seed), play(plain, seed)) << "seed " << seed;
    }
    EXPECT_EQ(detail::Subscription::liveCount(), 0);
}

INSTANTIATE_ON_BOTH_ENGINES(RandomScripts);

} // namespace
