// SPDX-License-Identifier: MIT
#include "icominterface.h"

// The meta-object lives here, so that every target that links this folder shares one.
