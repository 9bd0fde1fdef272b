// Nothing but the precompiled GoogleTest headers that the unit tests reuse.
