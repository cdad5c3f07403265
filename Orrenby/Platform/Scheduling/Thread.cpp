#include "Orrenby/Platform/Scheduling/Thread.hpp"

#include <pthread.h>
#include <unistd.h>

namespace orrenby::inline ORRENBY_ABI {

namespace {

enum class Answer : char { Unknown, Yes, No };

constinit thread_local Answer answer = Answer::Unknown;

/// The child's only thread is the one that called `fork`, and there it is the main thread, whatever it was
/// before.
void forgetInChild() { answer = Answer::Unknown; }

} // namespace

bool Thread::isMainThread() noexcept
{
    if (answer == Answer::Unknown) {
        [[maybe_unused]] static const int registered = pthread_atfork(nullptr, nullptr, forgetInChild);
        answer = gettid() == getpid() ? Answer::Yes : Answer::No;
    }
    return answer == Answer::Yes;
}

} // namespace orrenby
