#pragma once

/// Marks what the shared libraries offer to their users; everything else stays hidden.
#define VARNHOLT_EXPORT __attribute__((visibility("default")))
