// A library needs a source; the resource compiler adds the rest.
