#pragma once

#include "PageFixture.h"

/// Typing, keys and commands, and what they make of the blog's form.
class TestEditing : public QObject {
    Q_OBJECT
    PageFixture m_page;

private Q_SLOTS:
    void initTestCase();
    void types_data();
    void types();
    void undoesByKeyboard();
    void doesNotUndoIntoTheLastPost();
    void commands_data();
    void commands();
    void links();
    void linkAtCursorShowsItsAddress();
    void addsImages_data();
    void addsImages();
    void reportsTheSelection();
    void reportsStyleAtTheCursor();
    void imageGoesWhereTheCursorWas();
    void typesBehindABox_data();
    void typesBehindABox();
    void tabLeavesThePage();
    void textIsWhereTheTitleExpectsIt_data();
    void textIsWhereTheTitleExpectsIt();
};
