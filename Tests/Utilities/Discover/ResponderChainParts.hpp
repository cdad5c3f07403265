#pragma once

/// @file
/// Responders that write down when they are asked and what they do.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/Discover/ResponderChain.hpp"
#include <memory>
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::testing {

using Chain = ResponderChain<std::string>;
using Diary = std::vector<std::string>;

inline Ref<int> someone() { return std::make_shared<int>(); }

/// Claims every message.
inline Chain::Handler claiming(Diary& diary, const std::string& name)
{
    return [&diary, name](const std::string&) -> Chain::Action {
        diary.push_back(name + " asked");
        return [&diary, name](const std::string& message) { diary.push_back(name + " does " + message); };
    };
}

/// Claims no message.
inline Chain::Handler passing(Diary& diary, const std::string& name)
{
    return [&diary, name](const std::string&) -> Chain::Action {
        diary.push_back(name + " asked");
        return nullptr;
    };
}

} // namespace orrenby::testing
