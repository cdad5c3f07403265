#pragma once

/// @file
/// Responders that write down when they are asked and what they do.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/Discover/ResponderChain.hpp"
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
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

/// Claims no message, but sends each once more while it is asked.
inline Chain::Handler sendingAgain(Diary& diary, const std::string& name, Chain& chain)
{
    return [&diary, name, &chain, isSending = std::make_shared<bool>()](
               const std::string& message) -> Chain::Action {
        diary.push_back(name + " asked");
        if (!std::exchange(*isSending, true)) {
            EXPECT_TRUE(chain.send(message));
            *isSending = false;
        }
        return nullptr;
    };
}

/// A chain to put into another, two to respond, and what they write.
struct TwoChains {
    Diary diary;
    Ref<int> a = someone();
    Ref<int> b = someone();
    Ref<Chain> inner = std::make_shared<Chain>();
    Chain outer;
};

} // namespace orrenby::testing
