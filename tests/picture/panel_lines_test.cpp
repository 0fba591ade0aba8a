#include "picture/panel_lines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <numbers>

#include "core/conversions.h"
#include "model/registers.h"
#include "picture/deviation.h"
#include "picture/picture.h"
#include "picture/test_picture.h"
#include "picture/wall.h"
#include "sim/device/projector.h"
#include "tests/files/file_fixture.h"
#include "tests/support/curves.h"
#include "tests/support/said.h"
