#include "IBnLink.h"

namespace NSKZ::NSKZCore {

IBnLink::~IBnLink() = default;

} // namespace NSKZ::NSKZCore
