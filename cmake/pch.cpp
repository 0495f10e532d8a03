// The translation unit for which the precompiled header is created.
