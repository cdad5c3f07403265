#pragma once

/// @file
/// Service decoding with its keys, its reports and its streams.

#include "Orrenby/Utilities/ServiceDecoder/DecodeReport.hpp"
#include "Orrenby/Utilities/ServiceDecoder/DecodingReport.hpp"
#include "Orrenby/Utilities/ServiceDecoder/KeyedServiceResponse.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceDecodable.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoder.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoderError.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceKey.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceStream.hpp"
