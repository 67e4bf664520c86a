#pragma once

#include "model/PostFields.h"

#include <QUrl>

/// What every post has, whatever it is stored in.
struct ZLAbstractPost : PostFields {
    QUrl localFile;
};
