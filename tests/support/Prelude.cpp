// The precompiled header needs a source of its own.
