#pragma once

#include "demo/random.h"

#include <string>

namespace orvo::demo {

/// A Korean name, surnames about as frequent as they are.
std::string person_name(random_stream& random, bool male, int birth_year);

/// A name that a workplace or a house may bear: "한빛", "늘봄".
std::string_view house_name(random_stream& random);

/// A login of Latin letters and digits, different for each number.
std::string login_of(random_stream& random, int number);

} // namespace orvo::demo
