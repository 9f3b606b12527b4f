// A library needs a source: its precompiled header of GoogleTest serves all test programs.
