#include "SysCodeCsv.h"

#include "CQVCheckSysNameLegal.h"
#include "CSysCodeData.h"
#include "SysCodeDefaults.h"
#include "SysCodeValueRange.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <vector>

namespace {
enum Column {
    kPath,
    kColour,
    kAci,
    kPipeInfo,
    kHorLaying,
    kVerLaying,
    kLineStyle,
    kLineString,
    kWidth,
    kAlpha,
    kRemark,
    kColumns
};

QString Quoted(const QString& field)
{
    if (!field.contains(QLatin1Char(',')) && !field.contains(QLatin1Char('"'))
        && !field.contains(QLatin1Char('\n')) && !field.contains(QLatin1Char('\r')))
        return field;
    QString escaped = field;
    escaped.replace(QLatin1String("\""), QLatin1String("\"\""));
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}

QString ColourText(COLORREF colour)
{
    return QStringLiteral("%1,%2,%3").arg(colour & 0xFF).arg((colour >> 8) & 0xFF).arg((colour >> 16) & 0xFF);
}

void CollectRows(const CSysCodeData& node, const QString& prefix, const std::function<int(COLORREF)>& aciOf,
    QList<QStringList>& rows)
{
    for (const CSysCodeData* code : node.GetChildren()) {
        const QString path = prefix + code->GetNodeName();
        const int aci = aciOf ? aciOf(code->GetMfcColor()) : 0;
        rows.append({ path, ColourText(code->GetMfcColor()), aci > 0 ? QString::number(aci) : QString(),
            code->GetAddedMsg(), code->GetHorLayingMode(), code->GetVerLayingMode(), code->GetLineStyle(),
            code->GetLineString(), QString::number(code->GetLineWidth(), 'g', 10),
            QString::number(code->GetAlpha()), code->GetDescribe() });
        CollectRows(*code, path + QLatin1Char('\\'), aciOf, rows);
    }
}

// One row's attribute cells checked and put on `code`; the reason when a cell
// cannot be taken. Cells of missing columns leave `code` as it is.
QString TakeAttributes(const QStringList& row, const std::vector<int>& at,
    const std::function<COLORREF(int)>& colourOfAci, CSysCodeData& code)
{
    const auto cell = [&](int column, bool& present) {
        present = at[column] >= 0;
        return present && at[column] < row.size() ? row[at[column]].trimmed() : QString();
    };
    bool has = false;
    const QString colour = cell(kColour, has);
    if (has && !colour.isEmpty()) {
        static const QRegularExpression rgb(
            QStringLiteral("^(\\d{1,3})\\s*,\\s*(\\d{1,3})\\s*,\\s*(\\d{1,3})$"));
        const QRegularExpressionMatch m = rgb.match(colour);
        if (!m.hasMatch() || m.captured(1).toInt() > 255 || m.captured(2).toInt() > 255
            || m.captured(3).toInt() > 255)
            return QStringLiteral("颜色应为 R,G,B（0-255）：%1").arg(colour);
        code.SetMfcColor(
            COLORREF(m.captured(1).toInt() | m.captured(2).toInt() << 8 | m.captured(3).toInt() << 16));
    } else if (const QString aci = cell(kAci, has); has && !aci.isEmpty()) {
        bool number = false;
        const int index = aci.toInt(&number);
        if (!number || index < 1 || index > 255 || !colourOfAci)
            return QStringLiteral("ACI 颜色号应为 1-255：%1").arg(aci);
        code.SetMfcColor(colourOfAci(index));
    }
    const auto text = [&](int column, void (CSysCodeData::*set)(const QString&)) {
        bool present = false;
        const QString value = cell(column, present);
        if (present)
            (code.*set)(value);
    };
    text(kPipeInfo, &CSysCodeData::SetAddedMsg);
    text(kHorLaying, &CSysCodeData::SetHorLayingMode);
    text(kVerLaying, &CSysCodeData::SetVerLayingMode);
    text(kLineStyle, &CSysCodeData::SetLineStyle);
    if (const QString chars = cell(kLineString, has); has) {
        static const QRegularExpression legal(QStringLiteral("^[A-Za-z0-9]{0,3}$"));
        if (!legal.match(chars).hasMatch())
            return QStringLiteral("线型字符仅支持字母和数字，且最长为3个字符：%1").arg(chars);
        code.SetLineString(chars);
    }
    if (const QString width = cell(kWidth, has); has && !width.isEmpty()) {
        bool number = false;
        const double value = width.toDouble(&number);
        if (!number || !IsSysLineWidthInRange(value))
            return QStringLiteral("线宽支持范围0-100：%1").arg(width);
        code.SetLineWidth(value);
    }
    if (const QString alpha = cell(kAlpha, has); has && !alpha.isEmpty()) {
        static const QRegularExpression digits(QStringLiteral("^\\d{1,3}$"));
        if (!digits.match(alpha).hasMatch() || !IsSysAlphaInRange(alpha.toInt()))
            return QStringLiteral("透明度仅支持0-100的整数：%1").arg(alpha);
        code.SetAlpha(alpha.toInt());
    }
    if (const QString remark = cell(kRemark, has); has) {
        if (remark.contains(QLatin1Char('&')) || remark.contains(QLatin1Char('/'))
            || remark.contains(QLatin1Char('\\')))
            return QStringLiteral("备注信息中包含以下不能使用的字符：&/\\");
        code.SetDescribe(remark);
    }
    return QString();
}

CSysCodeData* AddChild(CSysCodeData& parent, const QString& name)
{
    auto* child = new CSysCodeData;
    child->SetNodeName(name);
    int counter = 0;
    parent.AddDataToChild(counter, child, false);
    return child;
}
} // namespace

QStringList SysCodeCsvColumns()
{
    return { QStringLiteral("系统编号"), QStringLiteral("颜色"), QStringLiteral("ACI"),
        QStringLiteral("管线信息"), QStringLiteral("水平敷设方式"), QStringLiteral("垂直敷设方式"),
        QStringLiteral("线型"), QStringLiteral("线型字符"), QStringLiteral("线宽"), QStringLiteral("透明度"),
        QStringLiteral("备注") };
}

QList<QStringList> SysCodeSheetRows(const CSysCodeData& root, const std::function<int(COLORREF)>& aciOf)
{
    QList<QStringList> rows;
    CollectRows(root, QString(), aciOf, rows);
    return rows;
}

QByteArray WriteSysCodeCsv(const CSysCodeData& root, const std::function<int(COLORREF)>& aciOf)
{
    QString out = SysCodeCsvColumns().join(QLatin1Char(',')) + QStringLiteral("\r\n");
    for (const QStringList& row : SysCodeSheetRows(root, aciOf)) {
        QStringList line;
        for (const QString& field : row)
            line << Quoted(field);
        out += line.join(QLatin1Char(',')) + QStringLiteral("\r\n");
    }
    return QByteArray("\xEF\xBB\xBF") + out.toUtf8();
}

QList<CsvRecord> ParseCsv(const QByteArray& data)
{
    QString text = QString::fromUtf8(data);
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    QList<CsvRecord> records;
    CsvRecord record { 1, {} };
    QString field;
    bool quoted = false;
    bool fieldStarted = false;
    int line = 1;
    const auto endField = [&] {
        record.fields << field;
        field.clear();
        fieldStarted = false;
    };
    const auto endRecord = [&] {
        endField();
        if (!(record.fields.size() == 1 && record.fields.first().isEmpty()))
            records << record;
        record = CsvRecord { line, {} };
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (quoted) {
            if (c == QLatin1Char('"')) {
                if (i + 1 < text.size() && text[i + 1] == QLatin1Char('"'))
                    field += text[++i];
                else
                    quoted = false;
            } else {
                if (c == QLatin1Char('\n'))
                    ++line;
                field += c;
            }
        } else if (c == QLatin1Char('"') && !fieldStarted) {
            quoted = fieldStarted = true;
        } else if (c == QLatin1Char(',')) {
            endField();
        } else if (c == QLatin1Char('\r') || c == QLatin1Char('\n')) {
            if (c == QLatin1Char('\r') && i + 1 < text.size() && text[i + 1] == QLatin1Char('\n'))
                ++i;
            ++line;
            endRecord();
        } else {
            field += c;
            fieldStarted = true;
        }
    }
    if (fieldStarted || !field.isEmpty() || !record.fields.isEmpty())
        endRecord();
    return records;
}

namespace {
// The line of the first byte sequence that is not UTF-8 (overlong forms, surrogates
// and code points past U+10FFFF included); 0 when the whole text is UTF-8. A sheet
// saved in a local code page would otherwise come in as replacement characters.
int FirstNonUtf8Line(const QByteArray& data)
{
    int line = 1;
    const auto* p = reinterpret_cast<const unsigned char*>(data.constData());
    const qsizetype size = data.size();
    for (qsizetype i = 0; i < size;) {
        const unsigned char lead = p[i];
        if (lead < 0x80) {
            line += lead == '\n';
            ++i;
            continue;
        }
        int more = 0;
        unsigned char low = 0x80;
        unsigned char high = 0xBF;
        if (lead >= 0xC2 && lead <= 0xDF) {
            more = 1;
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            more = 2;
            low = lead == 0xE0 ? 0xA0 : 0x80;
            high = lead == 0xED ? 0x9F : 0xBF;
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            more = 3;
            low = lead == 0xF0 ? 0x90 : 0x80;
            high = lead == 0xF4 ? 0x8F : 0xBF;
        } else {
            return line;
        }
        if (i + more >= size)
            return line; // cut off inside a character
        if (p[i + 1] < low || p[i + 1] > high)
            return line;
        for (int k = 2; k <= more; ++k) {
            if (p[i + k] < 0x80 || p[i + k] > 0xBF)
                return line;
        }
        i += 1 + more;
    }
    return 0;
}

// A code new to the specialty starts as a blank row of the grid does, white, its
// width the default of the specialty it is read into.
void BlankAttributes(CSysCodeData& code)
{
    code.SetMfcColor(0xFFFFFF);
    SetBlankSysCodeAttributesUnsetWidth(code);
}

// Codes are found by their full names, ignoring letter case, through hashes: a
// sheet of a hundred thousand rows must not compare every row with every other.
class SheetReader
{
public:
    SheetReader(const CSysCodeData& existing, const std::function<COLORREF(int)>& colourOfAci,
        CSysCodeData& imported, QList<SysCodeCsvRefusal>& refused)
        : m_existing(existing)
        , m_colourOfAci(colourOfAci)
        , m_imported(imported)
        , m_refused(refused)
    {
        IndexExisting(existing);
    }

    void Row(const CsvRecord& record, const std::vector<int>& at)
    {
        const QString reason = Take(record, at);
        if (!reason.isEmpty())
            m_refused.append({ record.line, reason });
    }

private:
    struct Taken
    {
        CSysCodeData* code = nullptr;
        int line = 0; // 0 for a parent taken over from the specialty
    };

    void IndexExisting(const CSysCodeData& node)
    {
        for (const CSysCodeData* child : node.GetChildren()) {
            m_existingNames.insert(child->GetFullName().toCaseFolded(), child);
            IndexExisting(*child);
        }
    }

    QString Take(const CsvRecord& record, const std::vector<int>& at)
    {
        QStringList levels;
        if (const QString why = Levels(record, at, levels); !why.isEmpty())
            return why;
        CSysCodeData* parent = &m_imported;
        for (int i = 0; i + 1 < levels.size(); ++i) {
            QString why;
            parent = Parent(*parent, levels.mid(0, i + 1), why);
            if (!parent)
                return why;
        }
        const QString fullName = levels.join(QLatin1Char('\\'));
        const QString folded = fullName.toCaseFolded();
        const Taken there = m_taken.value(folded);
        if (there.code && (there.code->GetFullName() != fullName || there.line > 0))
            return QStringLiteral("与第 %1 行的 %2 重复").arg(there.line).arg(there.code->GetFullName());
        const CSysCodeData* known = m_existingNames.value(folded);
        if (known && known->GetFullName() != fullName)
            return QStringLiteral("与已有系统编号 %1 仅大小写不同").arg(known->GetFullName());
        CSysCodeData attributes;
        if (there.code)
            attributes.CopyAttributesFrom(*there.code);
        else if (known)
            attributes.CopyAttributesFrom(*known);
        else
            BlankAttributes(attributes);
        if (const QString why = TakeAttributes(record.fields, at, m_colourOfAci, attributes); !why.isEmpty())
            return why;
        CSysCodeData* code = there.code ? there.code : AddChild(*parent, levels.last());
        code->CopyAttributesFrom(attributes);
        m_taken.insert(folded, { code, record.line });
        return QString();
    }

    static QString Levels(const CsvRecord& record, const std::vector<int>& at, QStringList& levels)
    {
        const QString path
            = at[kPath] < record.fields.size() ? record.fields[at[kPath]].trimmed() : QString();
        if (path.isEmpty())
            return QStringLiteral("系统编号为空");
        levels = path.split(QLatin1Char('\\'));
        if (levels.size() > kMaxSysCodeLevel)
            return QStringLiteral("系统编号不允许超过3级：%1").arg(path);
        for (QString& level : levels) {
            level = level.trimmed();
            if (CQVCheckSysNameLegal::FindHiddenChar(level) >= 0)
                return CQVCheckSysNameLegal::IllegalNameMessage(level);
            if (!CQVCheckSysNameLegal::CheckSysNameLegal(level))
                return QStringLiteral("系统编号为空、过长或含有 \\ / & ' 或为 SYS：%1").arg(path);
        }
        return QString();
    }

    // The parent of a row's code: a code of the sheet, or one the specialty has,
    // taken over as it is.
    CSysCodeData* Parent(CSysCodeData& above, const QStringList& levels, QString& why)
    {
        const QString fullName = levels.join(QLatin1Char('\\'));
        const QString folded = fullName.toCaseFolded();
        if (const Taken there = m_taken.value(folded); there.code) {
            if (there.code->GetFullName() == fullName)
                return there.code;
            why = QStringLiteral("上级系统编号 %1 与第 %2 行的 %3 仅大小写不同")
                      .arg(fullName)
                      .arg(there.line)
                      .arg(there.code->GetFullName());
            return nullptr;
        }
        const CSysCodeData* known = m_existingNames.value(folded);
        if (!known || known->GetFullName() != fullName) {
            why = known ? QStringLiteral("上级系统编号 %1 与已有系统编号 %2 仅大小写不同")
                              .arg(fullName, known->GetFullName())
                        : QStringLiteral("上级系统编号不存在：%1").arg(fullName);
            return nullptr;
        }
        CSysCodeData* parent = AddChild(above, levels.last());
        parent->CopyAttributesFrom(*known);
        m_taken.insert(folded, { parent, 0 });
        return parent;
    }

    const CSysCodeData& m_existing;
    const std::function<COLORREF(int)>& m_colourOfAci;
    CSysCodeData& m_imported;
    QList<SysCodeCsvRefusal>& m_refused;
    QHash<QString, const CSysCodeData*> m_existingNames; // case-folded full name
    QHash<QString, Taken> m_taken; // the sheet's codes by case-folded full name
};
} // namespace

bool ReadSysCodeCsv(const QByteArray& data, const CSysCodeData& existing,
    const std::function<COLORREF(int)>& colourOfAci, CSysCodeData& imported,
    QList<SysCodeCsvRefusal>& refused, QString& error)
{
    if (const int line = FirstNonUtf8Line(data); line > 0) {
        error = QStringLiteral("第 %1 行不是 UTF-8 文本，请另存为 CSV（UTF-8）后再导入").arg(line);
        return false;
    }
    const QList<CsvRecord> records = ParseCsv(data);
    const QStringList titles = SysCodeCsvColumns();
    std::vector<int> at(kColumns, -1);
    if (!records.isEmpty()) {
        const QStringList& header = records.first().fields;
        for (int c = 0; c < kColumns; ++c) {
            for (int h = 0; h < header.size(); ++h) {
                if (header[h].trimmed() == titles[c]) {
                    at[size_t(c)] = h;
                    break;
                }
            }
        }
    }
    if (at[kPath] < 0) {
        error = QStringLiteral("表格第一行应为列标题，且含有“系统编号”列");
        return false;
    }
    // Parents before children, whatever order a hand-made sheet has; rows of one
    // level keep the sheet's order.
    const auto depth = [&](const CsvRecord& record) {
        return at[kPath] < record.fields.size() ? record.fields[at[kPath]].count(QLatin1Char('\\')) : 0;
    };
    QList<CsvRecord> rows = records.mid(1);
    std::stable_sort(rows.begin(), rows.end(),
        [&](const CsvRecord& a, const CsvRecord& b) { return depth(a) < depth(b); });
    SheetReader reader(existing, colourOfAci, imported, refused);
    for (const CsvRecord& row : rows) {
        if (std::all_of(
                row.fields.begin(), row.fields.end(), [](const QString& f) { return f.trimmed().isEmpty(); }))
            continue; // a blank row of the sheet
        reader.Row(row, at);
    }
    std::sort(refused.begin(), refused.end(),
        [](const SysCodeCsvRefusal& a, const SysCodeCsvRefusal& b) { return a.line < b.line; });
    return true;
}
