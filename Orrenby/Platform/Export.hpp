#pragma once

/// @file
/// What marks the library's binary edge: the export attribute and the name of the inline namespace.

/// Marks what is visible outside the shared libraries. Every thrown type carries it, so that it can be caught
/// across the edge.
#define ORRENBY_EXPORT __attribute__((visibility("default")))

/// @def ORRENBY_ABI
/// The inline namespace of everything the library declares.
///
/// The diagnostic build has one of its own: an object file of one kind does not link with a library of the
/// other.
#ifdef ORRENBY_DIAGNOSTICS
#define ORRENBY_ABI v1::inline diagnostics
#else
#define ORRENBY_ABI v1
#endif
