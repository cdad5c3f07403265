// Step 20: requests are values that are built in chains; uploads are written byte by byte, or streamed from a
// file.

#include "Orrenby/Foundation/URLRequest+Builder.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include "Orrenby/Testing/CountedUUIDs.hpp"
#include <array>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>

using namespace orrenby;

int main()
{
    // Boundaries and file names are new identifiers: here they are counted, so that every run prints the
    // same.
    auto world = World::current();
    world.setUUIDs(std::make_shared<testing::CountedUUIDs>());
    const World::Override override(world);

    const auto service = URLRequest("https://fieldbook.example/reports"_url)
        | addingHeader("Accept-Language", "de") | signed_("t0k3n");
    const auto report = service | using_(HTTPMethod::post)
        | encoding({{"title", "It's windy"}, {"height", 312}});
    std::printf("%s\n%s\n\n", report.description().c_str(), toCurl(report).c_str());

    // A request that has a body keeps it.
    const auto photo = HTTPBodyFormDataPart{.data = dataFromText("JPEG"), .mimetype = "image/jpeg"};
    std::printf("unchanged: %s\n\n", (report | attaching(photo, 0)) == report ? "yes" : "no");

    const auto upload = service | using_(HTTPMethod::post) | attaching(photo, 2);
    for (const std::byte byte : upload.httpBody().value())
        if (byte != std::byte('\r'))
            std::putchar(static_cast<char>(byte));

    // A file too large to be held is read while it is sent.
    const std::string path = "20-requests.jpg";
    std::ofstream(path) << std::string(100'000, 'x');
    auto stream = makeStreamedUpload({.path = path, .mimetype = "image/jpeg"}, {.photoIDs = {"a", "b"}});
    stream.body.setProgressHandler([](std::uint64_t offset, std::uint64_t length) {
        std::printf("sent %llu %%\n", static_cast<unsigned long long>(100 * offset / length));
    });
    std::array<std::byte, 40'000> buffer;
    while (stream.body.read(buffer) > 0) {}
    std::printf("%s\n", stream.body.description().c_str());

    // The service has the first half: the transport takes the upload up from there.
    const bool isThere = stream.body.restart(stream.body.length() / 2);
    while (isThere && stream.body.read(buffer) > 0) {}

    std::remove(path.c_str());
    return 0;
}
