#pragma once

#include <QString>

/// Writes one plain line to the log; the log has no levels. Never give it a password or a post's text.
void ZLLog(const QString &line);
