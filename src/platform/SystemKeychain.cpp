// The desktop's secret service through QtKeychain.
#include "platform/ZLKeychain.h"

#include <QCoroSignal>
#include <qt6keychain/keychain.h>

namespace {

using namespace QKeychain;

/// Runs one job to its end. A missing item is no failure.
QCoro::Task<Result<void>> finished(std::shared_ptr<Job> job)
{
    // Jobs would otherwise delete themselves before their result is read.
    job->setAutoDelete(false);
    job->setInsecureFallback(false);
    job->start();
    co_await qCoro(job.get(), &Job::finished);
    if (job->error() != NoError && job->error() != EntryNotFound)
        co_return failure(QStringLiteral("ZLKeychain"), int(job->error()), job->errorString());
    co_return Result<void>();
}

template <class AnyJob>
std::shared_ptr<AnyJob> makeJob(const QString &service, const QString &account)
{
    // The job's own signal is still on the stack when the waiting task goes on, so it dies a turn later.
    std::shared_ptr<AnyJob> job(new AnyJob(service), [](AnyJob *dead) { dead->deleteLater(); });
    job->setKey(account);
    return job;
}

class SystemKeychain : public ZLKeychainBackend {
public:
    QCoro::Task<Result<QString>> read(QString service, QString account) override
    {
        const auto job = makeJob<ReadPasswordJob>(service, account);
        const Result<void> outcome = co_await finished(job);
        if (!outcome)
            co_return failure(outcome.error());
        co_return Result<QString>(job->textData());
    }

    QCoro::Task<Result<void>> write(QString service, QString account, QString password) override
    {
        const auto job = makeJob<WritePasswordJob>(service, account);
        job->setTextData(password);
        const Result<void> outcome = co_await finished(job);
        co_return outcome;
    }

    QCoro::Task<Result<void>> remove(QString service, QString account) override
    {
        const Result<void> outcome = co_await finished(makeJob<DeletePasswordJob>(service, account));
        co_return outcome;
    }
};

} // namespace

std::unique_ptr<ZLKeychainBackend> makeSystemKeychain()
{
    return std::make_unique<SystemKeychain>();
}
