#pragma once

#include "app/Collaborators.h"

#include <QPointer>

/// Brings the program up, in an order that matters: the posts are read before the selector exists, and the first sync
/// comes after the login sheet has been decided on. `controller` owns the collaborators.
QCoro::Task<void> launch(QPointer<QObject> controller, Collaborators &collaborators);
