#pragma once

#include "shells/common/Json.hpp"

namespace headless {

using shell::Json;
using shell::jsonNumber;
using shell::jsonText;
using shell::jsonValue;
using shell::lineFrom;

}  // namespace headless
