#pragma once

#include "app/AppEnvironment.h"

/// The sheet that announces a new blog, and what follows it when the program runs for the first time.
class FirstRun : public QObject {
    Q_OBJECT
public:
    explicit FirstRun(AppEnvironment &environment);

    void didConnectToBlogWithName(const QString &name);

private:
    void closeBlogIsConnectedSheet();

    AppEnvironment &m_environment;
};
