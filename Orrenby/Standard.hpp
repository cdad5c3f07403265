#pragma once

/// @file
/// Everything of the first floor: what the standard library's own value types lack.

#include "Orrenby/Standard/AllCasesDictionary.hpp"
#include "Orrenby/Standard/Collect.hpp"
#include "Orrenby/Standard/Comparables.hpp"
#include "Orrenby/Standard/DetectedData.hpp"
#include "Orrenby/Standard/Integers.hpp"
#include "Orrenby/Standard/JSON/AnyOptional.hpp"
#include "Orrenby/Standard/JSON/DecodingError+Readable.hpp"
#include "Orrenby/Standard/JSON/Dictionaries.hpp"
#include "Orrenby/Standard/JSON/Dictionary+JSON.hpp"
#include "Orrenby/Standard/JSON/Encodable+JSON.hpp"
#include "Orrenby/Standard/JSON/JSONError.hpp"
#include "Orrenby/Standard/JSON/JSONPointer.hpp"
#include "Orrenby/Standard/JSON/JSONPointerError.hpp"
#include "Orrenby/Standard/JSON/JSONSerializable.hpp"
#include "Orrenby/Standard/NestedError.hpp"
#include "Orrenby/Standard/Optionals.hpp"
#include "Orrenby/Standard/Ranges.hpp"
#include "Orrenby/Standard/ResultDecoding.hpp"
#include "Orrenby/Standard/SequenceOperation.hpp"
#include "Orrenby/Standard/Sequences.hpp"
#include "Orrenby/Standard/Texts.hpp"
