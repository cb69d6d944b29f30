#include "IFaceBarCtrl.h"

#include "CSysCodeData.h"
#include "QvKsSysCodeBar.h"

#include <QPointer>
#include <QRegularExpression>

namespace {

struct BarState
{
    IFaceBarCtrl::DbClickFunc dbClick = nullptr;
    IFaceBarCtrl::SysCodeProvider provider;
    QString spec;
    CSysCodeData root;
    QString current;
    QPointer<QvKsSysCodeBar> bar;
};

BarState& State()
{
    static BarState state;
    return state;
}

const CSysCodeData* FindChild(const CSysCodeData* parent, const QString& name)
{
    for (const CSysCodeData* child : parent->GetChildren()) {
        if (child->GetNodeName() == name)
            return child;
    }
    for (const CSysCodeData* child : parent->GetChildren()) {
        if (child->GetNodeName().compare(name, Qt::CaseInsensitive) == 0)
            return child;
    }
    return nullptr;
}

void ShowInBar()
{
    if (QvKsSysCodeBar* bar = State().bar)
        bar->ShowCode(State().current);
}

} // namespace

void IFaceBarCtrl::RegDbClickSysFunc(DbClickFunc func)
{
    State().dbClick = func;
}

QString IFaceBarCtrl::CurSysCode()
{
    return State().current;
}

void IFaceBarCtrl::SetTreeItem(const QString& code)
{
    State().current = ResolveCode(code);
    ShowInBar();
}

void IFaceBarCtrl::ReFreshSysCodeBar()
{
    BarState& state = State();
    if (state.provider) {
        QString spec;
        CSysCodeData root;
        if (state.provider(spec, root)) {
            state.spec = spec;
            state.root = root;
        }
    }
    state.current = ResolveCode(state.current);
    if (state.bar)
        state.bar->Reload();
}

void IFaceBarCtrl::SetSysCodeProvider(SysCodeProvider provider)
{
    State().provider = std::move(provider);
    if (State().provider)
        ReFreshSysCodeBar();
}

void IFaceBarCtrl::SetSysCodes(const QString& spec, const CSysCodeData& root)
{
    BarState& state = State();
    state.spec = spec;
    state.root = root;
    state.current = ResolveCode(state.current);
    if (state.bar)
        state.bar->Reload();
}

QString IFaceBarCtrl::CurSpec()
{
    return State().spec;
}

const CSysCodeData& IFaceBarCtrl::SysCodes()
{
    return State().root;
}

QvKsSysCodeBar* IFaceBarCtrl::CreateSysCodeBar(QWidget* parent)
{
    auto* bar = new QvKsSysCodeBar(parent);
    State().bar = bar;
    bar->Reload();
    return bar;
}

QvKsSysCodeBar* IFaceBarCtrl::SysCodeBar()
{
    return State().bar;
}

QString IFaceBarCtrl::ResolveCode(const QString& code)
{
    static const QRegularExpression separators(QStringLiteral("[&\\\\]"));
    const QStringList names = code.split(separators, Qt::SkipEmptyParts);
    if (names.isEmpty())
        return {};
    QStringList resolved;
    const CSysCodeData* node = &State().root;
    for (const QString& name : names) {
        node = FindChild(node, name.trimmed());
        if (!node)
            return {};
        resolved.append(node->GetNodeName());
    }
    return resolved.join(QLatin1Char('&'));
}

void IFaceBarCtrl::OnBarSelect(const QString& code)
{
    State().current = ResolveCode(code);
}

void IFaceBarCtrl::OnBarDbClick(const QString& code)
{
    OnBarSelect(code);
    if (DbClickFunc func = State().dbClick)
        func();
}
