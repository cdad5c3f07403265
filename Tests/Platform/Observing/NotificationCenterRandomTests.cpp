#include "Orrenby/Platform/Observing/NotificationCenter.hpp"

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <vector>

using namespace orrenby;

namespace {

/// Does the same to a center and to a plain list of registrations, which is walked from the first to the
/// last.
///
/// A called registration whose number is divisible by 3 removes the one two places after it in the order of
/// numbers, and one whose number is divisible by 5 registers another for everything, which is removed after
/// the post without having been called.
class Twins {
public:
    explicit Twins(unsigned seed)
        : m_random(seed)
    {
        for (auto& sender : m_senders)
            sender = std::make_shared<int>();
    }

    void step()
    {
        switch (below(8)) {
        case 0:
        case 1:
        case 2:
            add(below(3), below(5));
            break;
        case 3:
            if (m_next > 0)
                remove(below(m_next));
            break;
        case 4:
            replaceSender(below(4));
            break;
        default:
            post(below(2), below(5));
        }
    }

    std::vector<int> actual;
    std::vector<int> expected;

    std::size_t expectedCount() const
    {
        std::size_t count = 0;
        for (const auto& [number, registration] : m_registrations)
            count += registration.senderAge == m_ages[registration.sender] ? 1U : 0U;
        return count;
    }
    std::size_t actualCount() const { return m_center.observerCount(); }

private:
    struct Registration {
        unsigned name;   ///< 2: every name.
        unsigned sender; ///< 4: any sender.
        unsigned senderAge;
    };

    unsigned below(unsigned bound) { return static_cast<unsigned>(m_random() % bound); }

    static NotificationName nameOf(unsigned name) { return name == 0 ? "first" : "second"; }

    NotificationSender senderOf(unsigned sender) const
    {
        return sender < 4 ? NotificationSender(m_senders[sender]) : NotificationSender();
    }

    void add(unsigned name, unsigned sender)
    {
        const auto number = m_next++;
        m_registrations[number] = {name, sender, m_ages[sender]};
        auto options = NotificationOptions{.object = senderOf(sender)};
        if (name < 2)
            options.name = nameOf(name);
        m_tokens.push_back(m_center.addObserver(options, [this, number](const Notification&) {
            actual.push_back(static_cast<int>(number));
            if (number % 3 == 0 && number + 2 < m_tokens.size())
                m_center.removeObserver(m_tokens[number + 2]);
            if (number % 5 == 0)
                m_added.push_back(
                    m_center.addObserver({}, [this](const Notification&) { actual.push_back(-1); }));
        }));
    }

    void remove(unsigned number)
    {
        m_registrations.erase(number);
        m_center.removeObserver(m_tokens[number]);
    }

    /// The old one is gone.
    void replaceSender(unsigned sender)
    {
        ++m_ages[sender];
        m_senders[sender] = std::make_shared<int>();
    }

    void post(unsigned name, unsigned sender)
    {
        const auto snapshot = m_registrations;
        for (const auto& [number, registration] : snapshot) {
            const auto isForName = registration.name == 2 || registration.name == name;
            const auto isForSender = registration.sender == 4
                || (registration.sender == sender && registration.senderAge == m_ages[sender]);
            if (!isForName || !isForSender || !m_registrations.contains(number))
                continue;
            expected.push_back(static_cast<int>(number));
            if (number % 3 == 0)
                m_registrations.erase(number + 2);
        }
        m_center.post(nameOf(name), senderOf(sender));
        for (const auto& token : m_added)
            m_center.removeObserver(token);
        m_added.clear();
    }

    std::mt19937 m_random;
    NotificationCenter m_center;
    std::vector<Ref<NotificationToken>> m_tokens;
    std::vector<Ref<NotificationToken>> m_added;
    std::map<unsigned, Registration> m_registrations;
    unsigned m_next = 0;
    Ref<int> m_senders[4];
    unsigned m_ages[5] = {};
};

TEST(NotificationCenterRandom, DoesWhatAPlainListOfRegistrationsWouldDo)
{
    for (unsigned seed = 1; seed <= 200; ++seed) {
        auto twins = Twins(seed);

        for (int step = 0; step < 300; ++step)
            twins.step();

        ASSERT_EQ(twins.actual, twins.expected) << "seed " << seed;
        ASSERT_EQ(twins.actualCount(), twins.expectedCount()) << "seed " << seed;
        ASSERT_FALSE(twins.actual.empty()) << "seed " << seed;
    }
}

} // namespace
