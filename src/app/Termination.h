#pragma once

#include "app/Collaborators.h"

#include <QPointer>

/// Saves what is open and then the store. False: the user chose to stay because something could not be saved.
/// `controller` owns the collaborators.
QCoro::Task<bool> terminate(QPointer<QObject> controller, Collaborators &collaborators);
