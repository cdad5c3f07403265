#include "Orrenby/Platform/Digest/SHA1.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <memory>
#include <openssl/evp.h>

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// Looking up the procedure takes longer than most digests do, so it is done once.
const EVP_MD* procedure() noexcept
{
    static const EVP_MD* const fetched = EVP_MD_fetch(nullptr, "SHA1", nullptr);
    return fetched;
}

struct FreesContext {
    void operator()(EVP_MD_CTX* context) const noexcept { EVP_MD_CTX_free(context); }
};
using Context = std::unique_ptr<EVP_MD_CTX, FreesContext>;

/// Whether this thread has given back its context, as it does when it ends. Without a destructor, so that
/// the destructors of others that come after can still ask.
thread_local bool isOver = false;

struct KeptContext {
    Context context{EVP_MD_CTX_new()};
    ~KeptContext() { isOver = true; }
};

SHA1Digest digestOf(std::span<const std::byte> bytes, EVP_MD_CTX* context)
{
    SHA1Digest digest;
    if (context == nullptr || EVP_DigestInit_ex2(context, procedure(), nullptr) != 1
        || EVP_DigestUpdate(context, bytes.data(), bytes.size()) != 1
        || EVP_DigestFinal_ex(context, reinterpret_cast<unsigned char*>(digest.data()), nullptr) != 1)
        fatalError("SHA-1 is not available", "Platform/Digest/SHA1");
    return digest;
}

} // namespace

SHA1Digest sha1(std::span<const std::byte> bytes)
{
    if (isOver)
        return digestOf(bytes, Context(EVP_MD_CTX_new()).get());
    thread_local const KeptContext kept;
    return digestOf(bytes, kept.context.get());
}

SHA1Digest sha1(std::string_view text) { return sha1(std::as_bytes(std::span(text))); }

} // namespace orrenby
