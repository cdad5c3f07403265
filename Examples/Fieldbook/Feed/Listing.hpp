#pragma once

/// @file
/// The list of reports as rows that stay up to date.

#include "Feed/Catalogue.hpp"
#include "Orrenby/Utilities/OrderedSet.hpp"
#include "Terminal/Terminal.hpp"
#include <optional>
#include <string>
#include <vector>

namespace fieldbook {

/// Remembers which report was shown in which row, and tells what became of the rows since:
///
///     row 2 → 5   #12 medium  Footbridge open again, Lower Marrow, ford
///     row 4 in    #14 …
///     row 8 out   #3
///
/// The rows are an ordered set, and what is told is the difference between two of them. Rows that only made
/// room for others are not told, nor those that stayed while others moved around them.
///
/// It prints nothing itself. Not synchronised.
class Listing {
public:
    /// @param terminal   Outlives the listing.
    /// @param catalogue  Outlives the listing.
    Listing(const Terminal& terminal, const Catalogue& catalogue)
        : m_terminal(terminal)
        , m_catalogue(catalogue)
    {}

    /// Whether rows were shown that changes can be told of.
    bool isShown() const { return m_rows.has_value(); }

    /// All reports in this order, one line each.
    std::vector<std::string> all(SortOrder order);

    /// The rows that have moved because the order is this one now. Of reports that were not shown before, or
    /// not yet, it gives all.
    std::vector<std::string> sorted(SortOrder order);

    /// What came, went and moved since the last call of any of these. Empty before the first one.
    std::vector<std::string> news();

private:
    using Rows = orrenby::OrderedSet<int>; ///< Numbers of reports.

    Rows rowsNow() const;
    std::vector<std::string> changes(bool hasTexts);
    std::string number(int number) const;
    std::string text(int number) const;

    const Terminal& m_terminal;
    const Catalogue& m_catalogue;
    SortOrder m_order = SortOrder::byNumber;
    std::optional<Rows> m_rows;
};

} // namespace fieldbook
