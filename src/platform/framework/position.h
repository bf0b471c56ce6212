#pragma once

/// Position of an element in a list or map; null after the last element.
struct POSITION__;
using POSITION = POSITION__*;
