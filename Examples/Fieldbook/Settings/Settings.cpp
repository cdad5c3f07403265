#include "Settings/Settings.hpp"

namespace fieldbook {

std::string_view nameOf(SortOrder order)
{
    switch (order) {
    case SortOrder::byNumber:
        return "number";
    case SortOrder::bySeverity:
        return "severity";
    case SortOrder::byPlace:
        return "place";
    }
    return "";
}

} // namespace fieldbook
