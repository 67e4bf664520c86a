#include "ComposeFixture.h"

class LinkTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void linksTheSelection()
    {
        for (const auto &[typed, linked] :
            {std::pair("example.org/a", "http://example.org/a"), {"http://example.org", "http://example.org"},
                {"https://example.org", "https://example.org"}, {"", "http://"}}) {
            ComposeFixture screen;
            screen.host.settings = QStringList{"linksInNewWindowByDefault"};
            screen.view.linkAnswer = {LinkAnswer::Done, typed, "Tip", false};
            screen.view.whileAsking = [&screen] { screen.controller->addLinkToCurrentSelection(); }; // the sheet is up
            screen.controller->addLinkToCurrentSelection();
            screen.settle();
            QCOMPARE(screen.view.askedLinks.size(), 1);
            QVERIFY(screen.view.askedLinks.first().newWindow);
            QCOMPARE(screen.page.calls, QStringList({"addLinkMark", "focus", QString("addLink %1 Tip 0").arg(linked)}));
        }
    }

    void changesALink()
    {
        const PageLink link{"/about", "Us", "About", true, true};
        const LinkAnswer::Deed done = LinkAnswer::Done;
        for (const auto &[answer, call] : {std::pair(LinkAnswer{done, "/about", "Us", true}, "removeLinkMark"),
                 {LinkAnswer{LinkAnswer::Cancel, "other", "Us", true}, "removeLinkMark"},
                 {LinkAnswer{LinkAnswer::Remove, "/about", "Us", true}, "removeLink"},
                 {LinkAnswer{done, "/about", "They", true}, "addLink /about They 1"},
                 {LinkAnswer{done, "/about", "Us", false}, "addLink /about Us 0"}}) {
            ComposeFixture screen(ZLWordpressPost::Draft);
            screen.page.link = link;
            screen.view.linkAnswer = answer;
            screen.controller->addLinkToCurrentSelection();
            screen.settle();
            QCOMPARE(screen.view.askedLinks.first().url, "/about");
            QCOMPARE(screen.page.calls.last(), call);
            Q_EMIT screen.page.openAddLink("/about", "Us", true);
            screen.settle();
            QCOMPARE(screen.page.calls.last(), call);
        }
    }

    void leavesAnotherTextAlone()
    {
        ComposeFixture screen(ZLWordpressPost::Draft);
        screen.view.linkAnswer = {LinkAnswer::Done, "example.org", {}, false};
        screen.view.whileAsking = [&screen] { // a sync replaces the text
            const DocumentPtr document = screen.controller->currentDocument();
            document->post.content = "<p>From the blog</p>";
            document->updateChangeCount();
            screen.controller->reloadCurrentPostAfterSyncingEngine(SyncEngine::WordPress);
        };
        screen.controller->addLinkToCurrentSelection();
        screen.settle();
        QCOMPARE(screen.page.calls, QStringList({"addLinkMark", "focus"}));
        QCOMPARE(screen.prompts.journal, QStringList("alert: The link was not set."));
    }
};

static const RegisteredTest<LinkTest> registered;

#include "LinkTest.moc"
