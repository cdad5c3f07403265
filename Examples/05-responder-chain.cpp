// Step 5: a message goes to the first responder that claims it; its sender knows none of them.

#include "Orrenby/Utilities/Discover/ResponderChain.hpp"
#include <cstdio>
#include <memory>
#include <string>

using namespace orrenby;

using Links = ResponderChain<std::string>;

// Opens the links of one scheme.
struct Opener {
    std::string name;
    std::string scheme;

    // What to do with a link, or nothing for one that is somebody else's.
    Links::Action claim(const std::string& link) const
    {
        if (!link.starts_with(scheme))
            return nullptr;
        return [this](const std::string& claimed) { std::printf("%s: %s\n", name.c_str(), claimed.c_str()); };
    }
};

void add(Links& links, const Ref<Opener>& opener)
{
    // The plain pointer is safe: a handler is asked while its responder lives.
    links.addResponder(opener, [claimer = opener.get()](const auto& link) { return claimer->claim(link); });
}

bool open(Links& links, const std::string& link)
{
    const auto isClaimed = links.send(link);
    if (!isClaimed)
        std::printf("nobody: %s\n", link.c_str());
    return isClaimed;
}

int main()
{
    auto links = Links();
    auto preview = std::make_shared<Opener>(Opener{"preview", "https://pictures."});
    const auto browser = std::make_shared<Opener>(Opener{"browser", "https:"});
    add(links, preview); // asked first
    add(links, browser);

    open(links, "https://pictures.example/7");
    open(links, "https://news.example");
    open(links, "mailto:ada@news.example");

    preview.reset(); // the chain keeps nobody alive
    return open(links, "https://pictures.example/8") ? 0 : 1;
}
