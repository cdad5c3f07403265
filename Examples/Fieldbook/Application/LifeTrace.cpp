#include "Application/LifeTrace.hpp"

#include "Application/Counted.hpp"
#include "Orrenby/Utilities/Streams/LiveSubscriptionCount.hpp"
#include <algorithm>
#include <cstddef>

namespace fieldbook {

std::string describeLiveParts()
{
    return "flows " + std::to_string(Counted<Part::flow>::liveCount()) + "  contexts "
        + std::to_string(Counted<Part::context>::liveCount()) + "  workers "
        + std::to_string(Counted<Part::worker>::liveCount()) + "  subscriptions "
        + std::to_string(orrenby::Streams::liveSubscriptionCount());
}

bool isNothingLive()
{
    return Counted<Part::flow>::liveCount() == 0 && Counted<Part::context>::liveCount() == 0
        && Counted<Part::worker>::liveCount() == 0 && orrenby::Streams::liveSubscriptionCount() == 0;
}

void LifeTrace::begin(std::string_view title) { m_terminal.print(m_terminal.styled(Style::bold, title)); }

void LifeTrace::step(std::string_view what)
{
    constexpr std::size_t column = 36;
    auto text = "  " + std::string(what);
    text.append(column - std::min(column, text.size()), ' ');
    m_terminal.print(m_terminal.styled(Style::faint, text + describeLiveParts()));
}

} // namespace fieldbook
