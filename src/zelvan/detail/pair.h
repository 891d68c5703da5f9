/// Two numbers in one vector.
#pragma once

namespace zelvan {

/// Two doubles, usually an x and a y. Compilers use vector instructions for them where the
/// processor has some.
using Pair = double __attribute__((vector_size(16)));

}  // namespace zelvan
