#include "mainwindow/DesktopWorkspace.h"

#include "platform/ZLLog.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QMimeData>

void DesktopWorkspace::openURL(const QUrl &url)
{
    // Addresses come from blogs: anything but a web page would start another program, or open a file.
    const bool isWebPage = url.scheme() == u"http" || url.scheme() == u"https";
    if (!isWebPage || !QDesktopServices::openUrl(url))
        ZLLog(u"could not open %1 in the browser"_qs.arg(url.toDisplayString()));
}

bool DesktopWorkspace::copyLink(const QUrl &url)
{
    QClipboard *clipboard = QGuiApplication::clipboard();
    if (!clipboard || !url.isValid())
        return false;
    auto *data = new QMimeData; // the clipboard takes it over
    data->setUrls({url});
    data->setText(url.toString());
    clipboard->setMimeData(data);
    return true;
}
