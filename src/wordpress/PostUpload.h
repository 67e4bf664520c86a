#pragma once

#include "store/Account.h"
#include "wordpress/ServiceCalls.h"
#include "wordpress/Upload.h"

class ZLDocument;
struct ContentCall;
struct SyncedImages;
struct ZLServiceEnvironment;

/// The road of one post: its local pictures in parallel, then its content, then for a new post the blog's copy of it.
/// The outcome is told to the service's delegate, too. The post's content takes the addresses that its pictures have on
/// the blog.
class PostUpload : public Upload {
    Q_OBJECT
public:
    PostUpload(PostPtr post, Kind kind, ZLWordpressService &service, const ZLServiceEnvironment &environment,
        SyncedImages &images);

    const PostPtr &post() const override { return m_post; }
    Kind kind() const override { return m_kind; }
    AccountPtr account() const;
    QString blogName() const override;
    QUrl localFile() const;
    Step step() const override { return m_step; }
    float progress() const override { return m_progress; }
    bool hasEnded() const { return m_outcome.has_value(); }
    const std::optional<UploadOutcome> &outcome() const override { return m_outcome; }

    void start();
    void cancel() override;

private:
    // A flow ends without looking at anything once the upload has ended: it is told so by `false` or by a cancelled
    // answer.
    QCoro::Task<void> run();
    QCoro::Task<bool> sendPictures();
    QCoro::Task<bool> sendPicture(QString address);
    QCoro::Task<void> publishNew();
    QCoro::Task<Result<QString>> makePost();
    QCoro::Task<Result<QString>> findOnBlog();
    QCoro::Task<void> readBack(QString id);
    QCoro::Task<void> update();
    QCoro::Task<CallAnswer> editAgainstNewerVersion();
    QCoro::Task<Result<PostPtr>> fetch(QString id);
    QCoro::Task<CallAnswer> sendContent(ContentCall call);
    QCoro::Task<bool> noteFirstPublish(QDateTime began);
    QCoro::Task<Result<std::shared_ptr<ZLDocument>>> openDocument();

    void setStep(Step step);
    void setProgress(float progress);
    void didSendPicture(const QString &address, float progress);
    QDateTime lastKnownDate() const;
    void takeAsOnBlog(const QDateTime &answered);
    ZLWordpressServiceRequestType contentType() const;
    void endPublished(const PostPtr &remote);
    void fail(ZLWordpressServiceRequestType type, const ZLError &error);
    void end(const UploadOutcome &outcome);
    void tell(const UploadOutcome &outcome);

    const PostPtr m_post;
    const Kind m_kind;
    ZLWordpressService &m_service;
    const ZLServiceEnvironment &m_environment;
    SyncedImages &m_images;
    ServiceCalls m_calls;
    QHash<QString, float> m_pictures; ///< how far each has come
    Step m_step = Preparing;
    float m_progress = 0;
    std::optional<UploadOutcome> m_outcome;
};
