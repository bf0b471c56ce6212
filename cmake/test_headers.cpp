// Holds the precompiled headers of the tests. Nothing runs it.
