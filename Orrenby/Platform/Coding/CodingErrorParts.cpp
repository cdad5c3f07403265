#include "Orrenby/Platform/Coding/CodingErrorParts.hpp"

#include "Orrenby/Platform/Objects/Array.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

std::string joinedPath(const std::vector<CodingKey>& path)
{
    std::string result;
    for (const CodingKey& key : path)
        result += (result.empty() ? "" : " > ") + key.stringValue();
    return path.empty() ? "the root" : result;
}

Dictionary codingErrorUserInfo(const std::vector<CodingKey>& path, const std::string& debugDescription,
    const std::optional<AnyError>& underlyingError)
{
    Array keys;
    for (const CodingKey& key : path)
        keys.push_back(key.stringValue());
    Dictionary userInfo = {{"NSCodingPath", keys}, {"NSDebugDescription", debugDescription}};
    if (underlyingError)
        userInfo.set(NSUnderlyingErrorKey, underlyingError->nsError());
    return userInfo;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
