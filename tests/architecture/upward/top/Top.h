#pragma once
// Reaches the layer below: allowed.

#include "core/Base.h"
