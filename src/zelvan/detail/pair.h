/// Two numbers at once.
#pragma once

namespace zelvan {

/// Two numbers, mostly x and y, that compilers compute with at once where the processor can.
using Pair = double __attribute__((vector_size(16)));

}  // namespace zelvan
