#pragma once

#include <QCoroTask>
#include <QPointer>

class ZLAppDelegate;

/// Saves what is open and then the store. False: the user chose to stay, because something could not be saved or a post
/// is still on its way to a blog.
QCoro::Task<bool> terminate(QPointer<ZLAppDelegate> app);
