// Step 6: settings that tell when they change, and values that are computed from them.

#include "Orrenby/Platform/Observing/Computed.hpp"
#include "Orrenby/Platform/Observing/Property.hpp"
#include "Orrenby/Utilities/Observers/KeyPathObserver.hpp"
#include <cstdio>
#include <memory>
#include <vector>

using namespace orrenby;

class Settings : public ObservableObject {
public:
    Property<int, "fontSize"> fontSize{*this, 12};
    Property<int, "zoom"> zoom{*this, 100}; // in per cent
    Computed<int, "shownSize"> shownSize{
        *this, [this] { return fontSize * zoom / 100; }, {"fontSize", "zoom"}};
};

int main()
{
    const auto settings = std::make_shared<Settings>();
    std::vector<int> sizes;

    auto observer = make<KeyPathObserver<Settings>>(settings);
    observer->observe(keyPath<&Settings::shownSize>(), [&](const KeyPathObservation<int>& size) {
        if (size.isInitial())
            std::printf("text is %d points high\n", size.value());
        else
            std::printf("text grows by %d to %d\n", size.value() - size.oldValue(), size.value());
        sizes.push_back(size.value());
    });

    settings->fontSize = 16;
    settings->zoom = 150;
    settings->zoom = 150; // no change, no news
    observer.reset();     // nobody watches any more
    settings->zoom = 300;

    std::printf("in the end: %d\n", settings->shownSize.get());
    return sizes == std::vector{12, 16, 24} ? 0 : 1;
}
