// Step 3: flows own contexts and form a tree that ends by itself.

#include "Orrenby/Utilities/Discover.hpp"
#include <cstdio>
#include <string>

using namespace orrenby;

class Analytics : public AbstractWorker {};

class ScreenContext : public AbstractPresentableContext<Analytics, std::string> {
public:
    explicit ScreenContext(std::string title)
        : AbstractPresentableContext(std::move(title), Workers(), make<Analytics>())
    {}

protected:
    void didBecomeActive() override { std::printf("  %s is on\n", presentable().c_str()); }
    void willResignActive() override { std::printf("  %s is off\n", presentable().c_str()); }
};

// The view controller is whatever shows the flow; here it is a number of a window.
class ScreenFlow : public AbstractFlow<ScreenContext, int> {
public:
    ScreenFlow(std::string title, int window)
        : AbstractFlow(make<ScreenContext>(std::move(title)), window)
    {}
};

class HomeFlow : public ScreenFlow {
public:
    HomeFlow()
        : ScreenFlow("home", 1)
    {}

protected:
    void didStart() override { attach(make<ScreenFlow>("feed", 2)); } // attaching starts
};

int main()
{
    std::puts("start:");
    auto home = make<HomeFlow>();
    home->start();
    const auto settings = make<ScreenFlow>("settings", 3);
    home->attach(settings);

    std::puts("detach the flow in window 2:");
    home->detach<ScreenFlow>([](ScreenFlow& flow) { return flow.viewController() == 2; });

    std::puts("release the root:"); // its sub-flows end first, even those that others hold
    home.reset();
    std::printf("settings is %s\n", settings->context()->isActive() ? "on" : "off");
}
