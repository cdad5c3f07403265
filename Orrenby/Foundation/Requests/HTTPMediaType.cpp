#include "Orrenby/Foundation/Requests/HTTPMediaType.hpp"

namespace orrenby::inline ORRENBY_ABI {

std::string HTTPMediaType::multipartFormData(std::string_view boundary)
{
    return std::string("multipart/form-data; boundary=").append(boundary);
}

} // namespace orrenby
