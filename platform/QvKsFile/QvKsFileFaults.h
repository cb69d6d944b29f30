#pragma once

// For tests of failure handling: makes a chosen step of the file writes fail as the
// system would (a full disk, a refused rename), so that every caller's handling of
// it can be tried on any machine. Nothing fails unless a test asks.
class QvKsFileFaults
{
public:
    enum class Step { Create, Write, Sync, Close, Rename };

    // The n-th `step` from now (counting every file written) fails with the system
    // error `error` (an errno value); n = 0 turns the fault off. A failing write
    // first writes half of what it was given, as a disk that fills up does.
    static void FailNth(Step step, int n, int error);
    // The n-th write from now fails as a full disk does.
    static void FailNthWrite(int n);
    // Every step of every write from now fails with `error` until Clear.
    static void FailAll(int error);
    static void Clear();
    // How many steps of that kind ran since the last FailNth / FailAll / Clear.
    static int StepsDone(Step step);

    // The writer's side: the error this step is to fail with, or 0 to run it.
    static int Take(Step step);
};
