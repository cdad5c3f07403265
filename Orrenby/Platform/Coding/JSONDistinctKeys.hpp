#pragma once

/// @file
/// Makes the keys of each object distinct while a JSON text is read. Not in the umbrella header: part of the
/// coders' own workings.

#include "Orrenby/Platform/Coding/JSONTable.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Looks for repeated keys in each object once it is complete.
///
/// Objects of a list mostly have the keys of one of the last few in the same order; comparing with those is
/// all that they cost. Others go through a hash table. An object with a repeated key, which is rare, is
/// written anew. Linear, also for keys chosen to collide. Not synchronised.
class JSONDistinctKeys {
public:
    /// @param object  The complete object, at the end of the table.
    /// @param count   Its members.
    /// @param depth   How many values hold it.
    void check(JSONTable& table, std::uint32_t object, std::size_t count, std::size_t depth);

private:
    struct Member {
        std::uint32_t first; ///< Where the key stands first.
        std::uint32_t last;  ///< Whose value counts.
    };

    /// An object whose keys are distinct. One with a count of 0 is none.
    struct Known {
        std::uint32_t object = 0;
        std::uint32_t count = 0;
    };
    struct KnownObjects {
        std::array<Known, 4> objects = {};
        std::size_t next = 0; ///< Whose place the next one takes.
    };

    bool hasKeysOf(const JSONTable& table, std::uint32_t known, std::uint32_t object) const;
    bool isDistinct(const JSONTable& table, std::uint32_t object, std::size_t count);
    /// The slot of the member with this key, or the free slot for it.
    std::uint32_t& slotOf(const JSONTable& table, const JSONNode& node);
    void rewrite(JSONTable& table, std::uint32_t object, std::size_t count);

    std::vector<KnownObjects> m_known;  ///< For each depth.
    std::vector<std::uint32_t> m_slots; ///< Nodes by the hash of their key; 0 marks a free slot.
};

} // namespace orrenby::inline ORRENBY_ABI::detail
