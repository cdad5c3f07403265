#include "Orrenby/Utilities/Log/Queue.hpp"

#include "Orrenby/Platform/Scheduling/Thread.hpp"

namespace orrenby::inline ORRENBY_ABI::Log {

Queue Queue::current() noexcept { return Thread::isMainThread() ? main : background; }

std::string_view Queue::description() const noexcept { return m_case == main ? "Main" : "Background"; }

std::string_view Queue::code() const noexcept { return m_case == main ? "[MAIN]" : "[BG]"; }

std::string_view Queue::emoji() const noexcept { return m_case == main ? "\U0001F680" : "\U0001F6A6"; }

} // namespace orrenby::Log
