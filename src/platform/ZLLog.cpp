#include "platform/ZLLog.h"

#include <QLoggingCategory>

namespace {
Q_LOGGING_CATEGORY(zalmo, "zalmo")
}

void ZLLog(const QString &line)
{
    qCInfo(zalmo).noquote() << line;
}
