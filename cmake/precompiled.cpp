// A library needs a source: its precompiled headers serve all rooms.
