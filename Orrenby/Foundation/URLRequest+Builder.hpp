#pragma once

/// @file
/// Everything that builds requests.

#include "Orrenby/Foundation/Requests/BodyPart.hpp"
#include "Orrenby/Foundation/Requests/Curl.hpp"
#include "Orrenby/Foundation/Requests/HTTPBodyFormDataPart.hpp"
#include "Orrenby/Foundation/Requests/HTTPHeaderField.hpp"
#include "Orrenby/Foundation/Requests/HTTPMediaType.hpp"
#include "Orrenby/Foundation/Requests/HTTPMethod.hpp"
#include "Orrenby/Foundation/Requests/RequestHeaders.hpp"
#include "Orrenby/Foundation/Requests/RequestJSON.hpp"
#include "Orrenby/Foundation/Requests/RequestMultipart.hpp"
#include "Orrenby/Foundation/Requests/StreamedUpload.hpp"
#include "Orrenby/Platform/Net/URLRequest.hpp"
