#include "INumCnd.h"

namespace NSKZ::NSKZCore {

INumCnd::~INumCnd() = default;

} // namespace NSKZ::NSKZCore
