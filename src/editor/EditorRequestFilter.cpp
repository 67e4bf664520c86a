#include "editor/EditorRequestFilter.h"

#include "editor/EditorScheme.h"

void EditorRequestFilter::interceptRequest(QWebEngineUrlRequestInfo &info)
{
    const QString scheme = info.requestUrl().scheme();
    if (scheme == QLatin1String(EditorScheme::name))
        return;
    const bool isPicture = info.resourceType() == QWebEngineUrlRequestInfo::ResourceTypeImage
        && (scheme == u"http" || scheme == u"https" || scheme == u"data");
    info.block(!isPicture);
}
