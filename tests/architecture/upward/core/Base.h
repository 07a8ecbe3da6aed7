#pragma once
// Reaches the layer above: a fault.

#include <vector>

#include "top/Top.h"
