#pragma once
// Reaches a subsystem of its own layer: a fault.

#include "top/Top.h"
