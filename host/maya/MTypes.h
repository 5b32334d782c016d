#pragma once
// Basic types of the host API.
#include <cstddef>
#include <cstdint>
#include <maya/MApiNamespace.h>

// The entry points are looked up by their plain names.
#ifndef PLUGIN_EXPORT
#define PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))
#endif

using MUintPtrSz = std::uintptr_t;
