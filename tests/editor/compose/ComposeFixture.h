#pragma once

#include "editor/ZLMainWindowCreateViewController.h"
#include "support/FakeComposeHost.h"
#include "support/FakeComposePage.h"
#include "support/FakeComposeView.h"
#include "support/FakePrompts.h"

#include <QTest>

/// The compose controller with everything around it pretended but the post files.
struct ComposeFixture {
    ComposeFixture() { controller->setRowUpdates(&rowUpdates); }

    /// Loads and waits until the post is on the screen.
    bool load(const LocalPostPtr &row)
    {
        const auto isThere = [this, row] {
            return controller->currentDocument() && controller->currentPost()->localPost == row;
        };
        controller->loadPost(row);
        return QTest::qWaitFor(isThere);
    }
    bool loadNew(int status, const QString &title = QStringLiteral("Title"),
        const QString &content = QStringLiteral("<p>Text</p>"), int type = 0)
    {
        const QString id = status == ZLWordpressPost::New ? QStringLiteral("q7Tz0kLm") : QStringLiteral("41");
        return load(host.addPost(id, status, title, content, type));
    }
    /// Waits for `count` uploads altogether.
    bool sends(int count)
    {
        return QTest::qWaitFor([this, count] { return host.sent.size() >= count; });
    }
    /// Lets everything happen that is on its way.
    static void settle() { QTest::qWait(20); }
    PostPtr post() const { return controller->currentPost(); }
    /// What the row's file holds, after all is written.
    DocumentPtr onDisk(const LocalPostPtr &row)
    {
        host.documents.saveAll();
        return ZLDocument::open(row->localFile).value_or(nullptr);
    }
    QByteArray bytesOnDisk(const LocalPostPtr &row)
    {
        QFile file(row->localFile.toLocalFile());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    FakeComposeHost host;
    FakeComposePage page;
    FakeComposeView view;
    FakePrompts prompts;
    FakeRowUpdates rowUpdates;
    std::unique_ptr<ZLMainWindowCreateViewController> controller =
        std::make_unique<ZLMainWindowCreateViewController>(host, page, view, prompts);
};
