// Long work tells how far it is, and learns that the user gives it up.
#pragma once

#include <limits>
#include <string>

namespace korvex {

/// Shows the progress of long work. One piece of work at a time, in the thread of the user interface.
class ProgressListener {
public:
    virtual ~ProgressListener() = default;
    virtual void begin(const std::wstring& label, bool canCancel) = 0;
    /// `part` of it is done, from 0 to 1; below 0: unknown. False when the user gives up. Called a few
    /// hundred times; for work that does not know its size, at every step.
    virtual bool step(double part) = 0;
    virtual void end() = 0;
};

/// Who hears of long work that begins from now on; null for nobody. Gives the one before.
ProgressListener* setProgressListener(ProgressListener* listener);

/// A piece of long work, while it lives. Pieces nest: what is within another one counts as its part
/// (nextPart) and is given up with it. Without a listener a step costs a comparison.
class ProgressScope {
public:
    /// `total` in any unit; 0 or less: unknown. The label is shown for the outermost piece only.
    ProgressScope(std::wstring label, long long total, bool canCancel = true);
    ~ProgressScope();
    ProgressScope(const ProgressScope&) = delete;
    ProgressScope& operator=(const ProgressScope&) = delete;

    /// So much of the total is done. False when the user gave up and this piece can be cancelled: it should
    /// take back what it did and end.
    bool step(long long done) { return done < m_next || report(done); }
    /// The next piece within this one is so much of its total.
    void nextPart(long long amount) { m_part = amount; }
    bool isCancelled() const;

private:
    bool report(long long done);
    double overall(double part) const;

    static constexpr long long kNever = std::numeric_limits<long long>::max();

    ProgressScope* m_outer;
    long long m_total;
    long long m_done = 0;
    long long m_part = 0;
    long long m_next = kNever;  ///< the step that is reported next
    bool m_canCancel;
    bool m_isHeard;
};

}  // namespace korvex
