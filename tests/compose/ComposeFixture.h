#pragma once

#include "compose/ZLMainWindowCreateViewController.h"
#include "support/FakeComposeHost.h"
#include "support/FakeComposePage.h"
#include "support/FakeComposeView.h"
#include "support/FakePrompts.h"
#include "support/Files.h"
#include "support/TestClasses.h"

/// The compose controller with everything around it pretended but the post files.
struct ComposeFixture {
    ComposeFixture() { controller->setRowUpdates(&rowUpdates); }
    /// Begins with a post of that status on the screen.
    explicit ComposeFixture(
        int status, const QString &title = u"Title"_qs, const QString &content = u"<p>Text</p>"_qs, int type = 0)
        : ComposeFixture()
    {
        if (!loadNew(status, title, content, type))
            qFatal("the post does not come");
    }

    /// Loads and waits until the post is on the screen.
    bool load(const LocalPostPtr &row)
    {
        const auto isThere = [this, row] {
            return controller->currentDocument() && controller->currentDocument()->fileURL() == row->localFile;
        };
        controller->loadPost(row);
        return QTest::qWaitFor(isThere);
    }
    bool loadNew(
        int status, const QString &title = u"Title"_qs, const QString &content = u"<p>Text</p>"_qs, int type = 0)
    {
        const QString id = status == ZLWordpressPost::New ? u"q7Tz0kLm"_qs : u"41"_qs;
        return load(host.addPost(id, status, title, content, type));
    }
    /// The button "Publish", or "Save".
    void press(bool publish) { controller->doActionForCurrentPost(publish ? PostAction::Publish : PostAction::Save); }
    void pressDelete() { controller->doActionForCurrentPost(PostAction::Delete); }
    /// Waits for `count` uploads altogether.
    bool sends(int count)
    {
        return QTest::qWaitFor([this, count] { return host.sent.size() >= count; });
    }
    /// Lets everything happen that is on its way.
    static void settle()
    {
        for (int turn = 0; turn < 20; ++turn) // each of its steps takes a turn of the event loop or two
            QCoreApplication::processEvents();
    }
    PostPtr post() const { return controller->currentPost(); }
    /// What the row's file holds, after all is written.
    DocumentPtr onDisk(const LocalPostPtr &row)
    {
        host.documents.saveAll();
        return ZLDocument::open(row->localFile).value_or(nullptr);
    }
    QByteArray bytesOnDisk(const LocalPostPtr &row) { return contentsOf(row->localFile.toLocalFile()); }

    FakeComposeHost host;
    FakeComposePage page;
    FakeComposeView view;
    FakePrompts prompts;
    FakeRowUpdates rowUpdates;
    std::unique_ptr<ZLMainWindowCreateViewController> controller =
        std::make_unique<ZLMainWindowCreateViewController>(host, page, view, prompts);
};
