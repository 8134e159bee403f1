// SPDX-License-Identifier: GPL-3.0-or-later
/// Put before the libraries of the desktop program (LD_PRELOAD), this ends it when its first window has been painted
/// and is handed to the display: how long that takes is then how long the process lives.
#include <unistd.h>

#include <QBackingStore>

void QBackingStore::flush(const QRegion&, QWindow*, const QPoint&)
{
    ::_exit(0);
}
