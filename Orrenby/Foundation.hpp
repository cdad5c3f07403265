#pragma once

/// @file
/// Everything of the third floor: operations added to platform types.

#include "Orrenby/Foundation/Arrays.hpp"
#include "Orrenby/Foundation/Chrono.hpp"
#include "Orrenby/Foundation/Countdowns.hpp"
#include "Orrenby/Foundation/Dates/DateDifferences.hpp"
#include "Orrenby/Foundation/Dates/DateFormatters.hpp"
#include "Orrenby/Foundation/Dates/DateFromText.hpp"
#include "Orrenby/Foundation/Dates/Locales.hpp"
#include "Orrenby/Foundation/DictionaryEntries.hpp"
#include "Orrenby/Foundation/Hashes.hpp"
#include "Orrenby/Foundation/NSAttributedString.hpp"
#include "Orrenby/Foundation/NSError.hpp"
#include "Orrenby/Foundation/OptionalNumbers.hpp"
#include "Orrenby/Foundation/QueryParameters.hpp"
#include "Orrenby/Foundation/SafeCopies.hpp"
#include "Orrenby/Foundation/SafeSetObject.hpp"
#include "Orrenby/Foundation/SaltedHash.hpp"
#include "Orrenby/Foundation/Text.hpp"
#include "Orrenby/Foundation/URL.hpp"
#include "Orrenby/Foundation/UUID.hpp"
