#pragma once

#include "PageFixture.h"

/// What the writer has not touched goes back byte for byte.
class TestRoundTrip : public QObject {
    Q_OBJECT
    PageFixture m_page;

private Q_SLOTS:
    void initTestCase();
    void keepsTheBody_data();
    void keepsTheBody();
    void changesOneWordOnly_data();
    void changesOneWordOnly();
    void keepsLocalPictures();
};
