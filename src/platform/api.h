#pragma once

/// Marks what the shared library offers; everything else in it is hidden.
#define ZEL_PLATFORM_API __attribute__((visibility("default")))
