#pragma once

/// Marks what the library exports. Everything else is hidden; a test compares the export table with a list of names.
#define ZELTRANS_API __attribute__((visibility("default")))
