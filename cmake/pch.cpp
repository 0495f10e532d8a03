// Gives the precompiled header a translation unit to be made with.
