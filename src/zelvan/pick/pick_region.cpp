#include <zelvan/pick/pick_region.h>

CPickRegion::CPickRegion() = default;
CPickRegion::CPickRegion(const CPickRegion&) = default;
CPickRegion& CPickRegion::operator=(const CPickRegion&) = default;
CPickRegion::~CPickRegion() = default;
