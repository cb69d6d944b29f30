#pragma once

// One prepared statement of one engine, behind SqlStatement. Binds are 1-based;
// columns 0-based. Step answers with the embedded engine's codes, which the store
// speaks everywhere: 100 a row, 101 the end, anything else a failure.
#include <QByteArray>
#include <QByteArrayView>

class SqlCursor
{
public:
    enum class Kind { Null, Integer, Real, Text };
    static constexpr int kRow = 100;
    static constexpr int kDone = 101;
    static constexpr int kError = 1;
    static constexpr int kBusy = 5;
    static constexpr int kFull = 13;

    virtual ~SqlCursor() = default;

    virtual void BindInt(int i, qint64 value) = 0;
    virtual void BindDouble(int i, double value) = 0;
    virtual void BindText(int i, const QByteArray& utf8) = 0;
    virtual void BindNull(int i) = 0;

    // The next row (kRow), the end (kDone) or a failure. After the end the next
    // call runs the statement again.
    virtual int Step() = 0;
    // Runs a statement that returns no rows and makes it ready to run again with
    // the same binds.
    virtual int Run() = 0;
    // Back to before the first row, binds cleared.
    virtual void Reset() = 0;

    virtual qint64 Int(int col) const = 0;
    virtual double Double(int col) const = 0;
    virtual QByteArrayView Utf8(int col) const = 0;
    virtual Kind ColumnKind(int col) const = 0;
    virtual int ColumnCount() const = 0;
};
