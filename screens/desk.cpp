// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/desk.h"

namespace lobemax::screens {

Design_State design;

}  // namespace lobemax::screens
