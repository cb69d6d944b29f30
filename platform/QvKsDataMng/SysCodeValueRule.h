#pragma once

// The values a code's numeric attributes may hold in a ".scn" file the data service
// reads: what the management dialog's cells accept, so a file cannot bring in what
// no one could type. A line width of 0 to 100 mm, or -1 for "not set"; a whole
// transparency of 0 to 100; a colour with nothing above 0x00FFFFFF. The module's
// own range rule says the same; a test holds the two together.
#include <QString>
#include <QtGlobal>

namespace SysCodeValueRule {

inline constexpr double kMinLineWidth = 0.0;
inline constexpr double kMaxLineWidth = 100.0;
inline constexpr double kUnsetLineWidth = -1.0;
inline constexpr int kMinAlpha = 0;
inline constexpr int kMaxAlpha = 100;
inline constexpr quint32 kMaxColor = 0x00FFFFFFu;

// Empty when the value may be held; otherwise why not, for a message.
QString LineWidthProblem(double width);
QString AlphaProblem(qint64 alpha);
QString ColorProblem(quint64 color);

} // namespace SysCodeValueRule
