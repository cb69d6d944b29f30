#include "QvKsFileFaults.h"

#include <array>
#include <cerrno>
#include <mutex>

namespace {
constexpr std::size_t kSteps = 5;

struct Faults
{
    std::mutex lock;
    std::array<int, kSteps> done {};
    QvKsFileFaults::Step step = QvKsFileFaults::Step::Write;
    int nth = 0;
    int error = 0;
    bool all = false;
};

Faults& faults()
{
    static Faults instance;
    return instance;
}

void arm(QvKsFileFaults::Step step, int nth, int error, bool all)
{
    Faults& f = faults();
    const std::lock_guard guard(f.lock);
    f.done.fill(0);
    f.step = step;
    f.nth = nth > 0 ? nth : 0;
    f.error = error;
    f.all = all;
}
} // namespace

void QvKsFileFaults::FailNth(Step step, int n, int error)
{
    arm(step, n, error, false);
}

void QvKsFileFaults::FailNthWrite(int n)
{
    FailNth(Step::Write, n, ENOSPC);
}

void QvKsFileFaults::FailAll(int error)
{
    arm(Step::Create, 0, error, true);
}

void QvKsFileFaults::Clear()
{
    arm(Step::Write, 0, 0, false);
}

int QvKsFileFaults::StepsDone(Step step)
{
    Faults& f = faults();
    const std::lock_guard guard(f.lock);
    return f.done[std::size_t(step)];
}

int QvKsFileFaults::Take(Step step)
{
    Faults& f = faults();
    const std::lock_guard guard(f.lock);
    const int count = ++f.done[std::size_t(step)];
    if (f.all)
        return f.error;
    if (f.nth > 0 && step == f.step && count == f.nth) {
        f.nth = 0;
        return f.error;
    }
    return 0;
}
