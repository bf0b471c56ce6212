#pragma once

/// Marks what the host may call across the library's border. Everything else stays hidden; a test holds the library's
/// export table against the list of names.
#define ZELTRANS_API __attribute__((visibility("default")))
