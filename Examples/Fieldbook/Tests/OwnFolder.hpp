#pragma once

/// @file
/// A folder that goes away with its test, and what its files hold.

#include "Tests/Support/TemporaryFolder.hpp"

namespace fieldbook {

using OwnFolder = orrenby::tests::TemporaryFolder;
using orrenby::tests::contentOf;

} // namespace fieldbook
