#include "IBtnCnd.h"

namespace NSKZ::NSKZCore {

IBtnCnd::~IBtnCnd() = default;

} // namespace NSKZ::NSKZCore
