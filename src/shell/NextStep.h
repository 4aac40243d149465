#pragma once

#include "library/ScoreLibrary.h"

namespace shell {

/// The steps on the road to the first scored exam, in their order; Done is behind it.
enum class Step { NewLibrary, Students, Exam, Totals, Done };

/// The first step that is not done yet. A library that cannot be asked is taken for done.
Step nextStep(library::ScoreLibrary& scoreLibrary);

} // namespace shell
