#pragma once
// Basic types of the host API.
#include <cstddef>
#include <cstdint>

#ifndef PLUGIN_EXPORT
#define PLUGIN_EXPORT __attribute__((visibility("default")))
#endif

using MUintPtrSz = std::uintptr_t;
using MCallbackId = MUintPtrSz;
