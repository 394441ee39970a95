// The list of forms: the one place of the desktop that knows views by name.
#pragma once

#include "desktop/form.h"

#include <memory>
#include <vector>

namespace vael {

/// One form for each view of the program, the main one first.
[[nodiscard]] std::vector<std::unique_ptr<Form>> MakeForms();

}  // namespace vael
