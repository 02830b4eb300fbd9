#include "IRpLink.h"

namespace NSKZ::NSKZCore {

IRpLink::~IRpLink() = default;

} // namespace NSKZ::NSKZCore
