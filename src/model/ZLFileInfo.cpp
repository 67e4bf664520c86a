#include "model/ZLFileInfo.h"

QVariantMap ZLFileInfo::dictionary() const
{
    return {
        {QStringLiteral("status"), status},
        {QStringLiteral("app_version"), appVersion.isEmpty() ? QStringLiteral("3") : appVersion},
    };
}
