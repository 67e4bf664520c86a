#pragma once

#include "PageFixture.h"

/// What a body or the clipboard holds never runs, and a page that dies comes back.
class TestSafety : public QObject {
    Q_OBJECT
    PageFixture m_page;

private Q_SLOTS:
    void initTestCase();
    void hostileBodiesAreInert_data();
    void hostileBodiesAreInert();
    void hostileClipboardIsInert();
    void pastesText_data();
    void pastesText();
    void servesNoFileButAllowedPictures();
    void doesNotNavigate();
    void returnsAfterACrash();
    void survivesAnEndlessBody();
    void keepsContentLoadedBeforeReady();
    void answersNothingWithoutAPage();
    void givesTheLastReportToItsPost();
};
