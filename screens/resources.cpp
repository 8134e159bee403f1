// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/resources.h"

#include <QDir>

/// The macro declares a function of the global scope, so it cannot stand in a namespace of ours.
static void Init_Resources()
{
    Q_INIT_RESOURCE(lobemax);
}

namespace lobemax::screens {

void Load_Resources()
{
    Init_Resources();
}

}  // namespace lobemax::screens
