#pragma once

#include "launcher/Arguments.h"

#include <string>

/// Makes this process that program. Comes back when it cannot, with the reason in errno.
void becomeProgram(const std::string& program, const Arguments& arguments);
