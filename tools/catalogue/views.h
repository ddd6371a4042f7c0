// Views of the tables for questions that are asked often.
#pragma once

#include "catalogue/schema.h"

namespace catalogue {

extern const Commands Views;

} // namespace catalogue
