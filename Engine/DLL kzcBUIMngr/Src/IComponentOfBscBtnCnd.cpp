#include "IComponentOfBscBtnCnd.h"

namespace NSKZ::NSKZCore {

IComponentOfBscBtnCnd::~IComponentOfBscBtnCnd() = default;

} // namespace NSKZ::NSKZCore
