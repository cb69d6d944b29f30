// Any bytes as a spreadsheet of codes: the reader must answer, every code it takes
// must be a legal trimmed name at most three levels deep with values in range, and
// what it takes must write out and read back to the same codes.
#include "CQVCheckSysNameLegal.h"
#include "CSysCodeData.h"
#include "SysCodeCsv.h"
#include "SysCodeValueRange.h"

#include <cstdint>
#include <cstdlib>

namespace {
int CheckCodes(const CSysCodeData& node, int level)
{
    int count = 0;
    for (const CSysCodeData* child : node.GetChildren()) {
        if (level > kMaxSysCodeLevel || !CQVCheckSysNameLegal::CheckSysNameLegal(child->GetNodeName())
            || child->GetNodeName() != child->GetNodeName().trimmed()
            || !SysCodeValueProblem(*child).isEmpty())
            std::abort();
        count += 1 + CheckCodes(*child, level + 1);
    }
    return count;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray sheet(reinterpret_cast<const char*>(data), qsizetype(size));
    CSysCodeData existing;
    auto* known = new CSysCodeData;
    known->SetNodeName(QStringLiteral("照明"));
    int counter = 0;
    existing.AddDataToChild(counter, known, false);

    const auto colourOfAci = [](int index) { return COLORREF(index * 0x010101); };
    CSysCodeData imported;
    QList<SysCodeCsvRefusal> refused;
    QString error;
    if (!ReadSysCodeCsv(sheet, existing, colourOfAci, imported, refused, error))
        return 0;
    const int codes = CheckCodes(imported, 1);

    CSysCodeData again;
    QList<SysCodeCsvRefusal> refusedAgain;
    if (!ReadSysCodeCsv(WriteSysCodeCsv(imported, {}), existing, colourOfAci, again, refusedAgain, error)
        || !refusedAgain.isEmpty() || CheckCodes(again, 1) != codes)
        std::abort();
    return 0;
}
