#pragma once

/// @file
/// What the whole library agrees on before its first declaration: its version, its ABI namespace and
/// which symbols a shared build shows.

#if (defined(_MSVC_LANG) ? _MSVC_LANG : __cplusplus) < 202002L
#error "QELModels needs C++20: compile with -std=c++20 (/std:c++20) or later"
#endif

/// The version. It is written here alone: the build reads it from these lines.
#define QELMODELS_VERSION_MAJOR 1
#define QELMODELS_VERSION_MINOR 0
#define QELMODELS_VERSION_PATCH 0

/// The inline namespace that keeps two minor versions apart in one process: no ABI is promised between them.
#define QELMODELS_ABI v1_0

/// Marks what a shared build exports. Applications that link the static library define
/// `QELMODELS_STATIC`; the CMake targets and the pkg-config file do it for them.
#if defined(_WIN32) && !defined(QELMODELS_STATIC)
#if defined(QELMODELS_BUILDING)
#define QELMODELS_EXPORT __declspec(dllexport)
#else
#define QELMODELS_EXPORT __declspec(dllimport)
#endif
#elif defined(__GNUC__) && !defined(QELMODELS_STATIC)
#define QELMODELS_EXPORT __attribute__((visibility("default")))
#else
#define QELMODELS_EXPORT
#endif

/// Marks what a shared build keeps to itself where every template would be shown. On Windows nothing is shown
/// unasked.
#if defined(__GNUC__) && !defined(_WIN32)
#define QELMODELS_HIDDEN [[gnu::visibility("hidden")]]
#else
#define QELMODELS_HIDDEN
#endif

/// Marks a result that lives no longer than the object it was asked of, where the compiler can check it.
#if defined(__clang__)
#define QELMODELS_LENT [[clang::lifetimebound]]
#else
#define QELMODELS_LENT
#endif
