#include "Orrenby/Platform/World/UUIDSource.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <cerrno>
#include <sys/random.h>

namespace orrenby::inline ORRENBY_ABI {

namespace {

class SystemUUIDSource final : public UUIDSource {
public:
    UUID next() override
    {
        auto bytes = randomBytes();
        bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40); // version 4
        bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80); // the variant that has versions
        return UUID(bytes);
    }

private:
    static UUID::Bytes randomBytes()
    {
        auto bytes = UUID::Bytes{};
        // Up to 256 bytes come whole; only the wait for the first entropy after boot can be interrupted.
        while (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
            if (errno != EINTR)
                fatalError("No random bytes from the system", "Platform/World/UUIDSource", 28);
        return bytes;
    }
};

} // namespace

UUIDSource::~UUIDSource() = default;

std::shared_ptr<UUIDSource> UUIDSource::system()
{
    static const auto& source = *new std::shared_ptr<UUIDSource>(std::make_shared<SystemUUIDSource>());
    return source;
}

} // namespace orrenby
