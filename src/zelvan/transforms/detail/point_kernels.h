/// The array mappings of `Mtx2D` in vector forms: the same bits as the plain loops.
///
/// Each is only called where its form may run. A count of 0 or less does nothing.
#pragma once

#include <zelvan/transforms/mtx2d.h>
#include <zelvan/transforms/records.h>

namespace zelvan::avx2 {

void map_to_real(const Mtx2D& m, int n, const real_pt_t* in, real_pt_t* out);
void map_to_int(const Mtx2D& m, int n, const real_pt_t* in, int_pt_t* out);
void map_to_int_times_eight(const Mtx2D& m, int n, const real_pt_t* in, int_pt_t* out);
void map_to_short(const Mtx2D& m, int n, const real_pt_t* in, short_pt_t* out);

}  // namespace zelvan::avx2

namespace zelvan::neon {

void map_to_real(const Mtx2D& m, int n, const real_pt_t* in, real_pt_t* out);
void map_to_int(const Mtx2D& m, int n, const real_pt_t* in, int_pt_t* out);
void map_to_int_times_eight(const Mtx2D& m, int n, const real_pt_t* in, int_pt_t* out);
void map_to_short(const Mtx2D& m, int n, const real_pt_t* in, short_pt_t* out);

}  // namespace zelvan::neon
