#include "Report/Report.hpp"

namespace fieldbook {

std::string_view nameOf(Severity severity)
{
    switch (severity) {
    case Severity::low:
        return "low";
    case Severity::medium:
        return "medium";
    case Severity::high:
        return "high";
    }
    return "";
}

} // namespace fieldbook
