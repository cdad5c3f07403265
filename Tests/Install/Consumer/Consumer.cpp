// A program that knows nothing of this source tree, only what was installed.

#include "Orrenby/Orrenby.hpp"
#include <cstdio>

class Greeting : public orrenby::Lifetime {
    void release() noexcept override { std::puts("released by the installed library's make"); }
};

int main()
{
    const auto greeting = orrenby::make<Greeting>();
    return greeting == nullptr;
}
