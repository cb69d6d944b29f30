#include "QvKsCADColorDlg.h"

#include "QvKsAciPalette.h"
#include "QvKsColorSwatch.h"

#include <QButtonGroup>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

QColor ToQColor(COLORREF c)
{
    return QColor(GetRValue(c), GetGValue(c), GetBValue(c));
}

COLORREF ToColorRef(const QColor& c)
{
    return RGB(BYTE(c.red()), BYTE(c.green()), BYTE(c.blue()));
}

constexpr int kHues = 24;
constexpr int kShades = 10;

} // namespace

QvKsCADColorDlg::QvKsCADColorDlg(COLORREF current, QWidget* parent)
    : QDialog(parent)
    , m_current(current & 0x00FFFFFF)
    , m_chosen(m_current)
{
    setWindowTitle(QStringLiteral("选择颜色"));
    auto* layout = new QVBoxLayout(this);

    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("colorTabs"));
    m_tabs->addTab(BuildIndexPage(), QStringLiteral("索引颜色"));
    m_tabs->addTab(BuildTruePage(), QStringLiteral("真彩色"));
    layout->addWidget(m_tabs);

    auto* preview = new QHBoxLayout;
    preview->addWidget(new QLabel(QStringLiteral("原颜色："), this));
    auto* oldColor = new QvKsColorSwatch(QvKsAciPalette::IndexOf(m_current), m_current, this);
    oldColor->setObjectName(QStringLiteral("oldColor"));
    oldColor->setCheckable(false);
    oldColor->setFixedSize(40, 22);
    preview->addWidget(oldColor);
    preview->addSpacing(12);
    preview->addWidget(new QLabel(QStringLiteral("新颜色："), this));
    m_newColor = new QvKsColorSwatch(0, m_current, this);
    m_newColor->setObjectName(QStringLiteral("newColor"));
    m_newColor->setCheckable(false);
    m_newColor->setFixedSize(40, 22);
    preview->addWidget(m_newColor);
    preview->addStretch();

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* ok = buttons->addButton(QStringLiteral("确定"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("okButton"));
    ok->setDefault(true);
    QPushButton* cancel = buttons->addButton(QStringLiteral("取消"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("cancelButton"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    preview->addWidget(buttons);
    layout->addLayout(preview);

    const int index = QvKsAciPalette::IndexOf(m_current);
    if (index > 0) {
        SelectIndex(index);
    } else {
        SelectTrueColor(m_current);
        m_tabs->setCurrentIndex(1);
    }
}

QWidget* QvKsCADColorDlg::BuildIndexPage()
{
    auto* page = new QWidget(this);
    page->setObjectName(QStringLiteral("indexPage"));
    auto* layout = new QVBoxLayout(page);
    auto* group = new QButtonGroup(page);
    group->setExclusive(true);

    layout->addLayout(BuildHueGrid());
    auto* named = new QHBoxLayout;
    named->addWidget(new QLabel(QStringLiteral("标准颜色："), page));
    named->addLayout(BuildRow(1, 9));
    named->addStretch();
    named->addWidget(new QLabel(QStringLiteral("灰度："), page));
    named->addLayout(BuildRow(250, 255));
    layout->addLayout(named);

    for (int i = QvKsAciPalette::kFirst; i <= QvKsAciPalette::kLast; ++i)
        group->addButton(m_swatches[std::size_t(i)]);

    auto* info = new QHBoxLayout;
    info->addWidget(new QLabel(QStringLiteral("颜色："), page));
    m_indexEdit = new QLineEdit(page);
    m_indexEdit->setObjectName(QStringLiteral("indexEdit"));
    // 1..255 only: a digit that would pass 255 is refused as it is typed.
    static const QRegularExpression kIndex(
        QStringLiteral("(?:[1-9]|[1-9][0-9]|1[0-9][0-9]|2[0-4][0-9]|25[0-5])?"));
    m_indexEdit->setValidator(new QRegularExpressionValidator(kIndex, m_indexEdit));
    m_indexEdit->setMaximumWidth(60);
    connect(m_indexEdit, &QLineEdit::textEdited, this, &QvKsCADColorDlg::OnIndexEdited);
    info->addWidget(m_indexEdit);
    m_indexLabel = new QLabel(page);
    m_indexLabel->setObjectName(QStringLiteral("indexLabel"));
    info->addWidget(m_indexLabel);
    m_rgbLabel = new QLabel(page);
    m_rgbLabel->setObjectName(QStringLiteral("rgbLabel"));
    info->addWidget(m_rgbLabel);
    info->addStretch();
    layout->addLayout(info);
    layout->addStretch();
    return page;
}

QLayout* QvKsCADColorDlg::BuildHueGrid()
{
    // 24 hues across; the pure shades bright to dark on top, the pale shades dark to
    // bright below, so the two halves meet at their darkest rows.
    auto* grid = new QGridLayout;
    grid->setSpacing(0);
    for (int hue = 0; hue < kHues; ++hue) {
        for (int shade = 0; shade < kShades; ++shade) {
            const int row = (shade % 2 == 0) ? shade / 2 : kShades - 1 - shade / 2;
            grid->addWidget(AddSwatch(10 + hue * kShades + shade), row, hue);
        }
    }
    return grid;
}

QLayout* QvKsCADColorDlg::BuildRow(int first, int last)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(1);
    for (int i = first; i <= last; ++i) {
        QvKsColorSwatch* swatch = AddSwatch(i);
        swatch->setFixedSize(20, 20);
        row->addWidget(swatch);
    }
    return row;
}

QvKsColorSwatch* QvKsCADColorDlg::AddSwatch(int index)
{
    auto* swatch = new QvKsColorSwatch(index, QvKsAciPalette::ColorOf(index), this);
    swatch->setObjectName(QStringLiteral("aci_%1").arg(index));
    swatch->setFixedSize(16, 16);
    m_swatches[std::size_t(index)] = swatch;
    connect(swatch, &QvKsColorSwatch::clicked, this, [this, index] { SelectIndex(index); });
    connect(swatch, &QvKsColorSwatch::doubleClicked, this, [this, index] {
        SelectIndex(index);
        accept();
    });
    return swatch;
}

QWidget* QvKsCADColorDlg::BuildTruePage()
{
    auto* page = new QWidget(this);
    page->setObjectName(QStringLiteral("truePage"));
    auto* layout = new QVBoxLayout(page);
    m_trueColor = new QColorDialog(page);
    m_trueColor->setObjectName(QStringLiteral("trueColor"));
    m_trueColor->setWindowFlags(Qt::Widget);
    m_trueColor->setOptions(QColorDialog::NoButtons | QColorDialog::DontUseNativeDialog);
    m_trueColor->setCurrentColor(ToQColor(m_current));
    connect(m_trueColor, &QColorDialog::currentColorChanged, this, &QvKsCADColorDlg::OnTrueColorChanged);
    layout->addWidget(m_trueColor);
    return page;
}

bool QvKsCADColorDlg::SelectIndex(int index)
{
    if (!QvKsAciPalette::IsValidIndex(index))
        return false;
    m_swatches[std::size_t(index)]->setChecked(true);
    Choose(index, QvKsAciPalette::ColorOf(index));
    return true;
}

void QvKsCADColorDlg::SelectTrueColor(COLORREF color)
{
    // A true colour unchecks every cell: the index page no longer shows the choice.
    for (QvKsColorSwatch* swatch : m_swatches) {
        if (swatch && swatch->isChecked()) {
            swatch->group()->setExclusive(false);
            swatch->setChecked(false);
            swatch->group()->setExclusive(true);
        }
    }
    Choose(0, color & 0x00FFFFFF);
}

void QvKsCADColorDlg::Choose(int index, COLORREF color)
{
    m_chosenIndex = index;
    m_chosen = color;
    m_newColor->SetColor(index, color);
    m_indexLabel->setText(index > 0 ? QStringLiteral("索引颜色：%1").arg(index) : QStringLiteral("真彩色"));
    m_rgbLabel->setText(QStringLiteral("红,绿,蓝：%1,%2,%3")
                            .arg(GetRValue(color))
                            .arg(GetGValue(color))
                            .arg(GetBValue(color)));
    if (!m_indexEdit->hasFocus())
        m_indexEdit->setText(index > 0 ? QString::number(index) : QString());
    m_syncing = true;
    m_trueColor->setCurrentColor(ToQColor(color));
    m_syncing = false;
}

void QvKsCADColorDlg::OnIndexEdited(const QString& text)
{
    bool ok = false;
    const int index = text.toInt(&ok);
    if (ok)
        SelectIndex(index);
}

void QvKsCADColorDlg::OnTrueColorChanged(const QColor& color)
{
    if (!m_syncing)
        SelectTrueColor(ToColorRef(color));
}
