#pragma once

// The plotting library's header uses Qt's lower-case keywords, which this program leaves out.
#define signals Q_SIGNALS
#define slots Q_SLOTS
#define foreach Q_FOREACH
#include <qcustomplot.h>
#undef signals
#undef slots
#undef foreach
