// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/desk.h"

namespace lobemax::screens {

Design_State design;

History& Desk_History()
{
    static History history(design);
    return history;
}

}  // namespace lobemax::screens
