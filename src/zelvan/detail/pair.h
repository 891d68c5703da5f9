/// Two numbers in one vector.
#pragma once

namespace zelvan {

/// Two numbers, mostly x and y, on which compilers use vector instructions where they exist.
using Pair = double __attribute__((vector_size(16)));

}  // namespace zelvan
