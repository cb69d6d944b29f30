#pragma once

// The attribute bar as other modules see it: the system codes of the current
// specialty and the one the user has chosen as current, which new pipes take.
//
// A code is named by its level names joined by "&" ("给水&生活给水"); "\" is taken
// as a level separator too on the way in. The bar's state lives here, so the calls
// work whether or not a bar widget is shown; a shown bar always mirrors it.
//
// The host hands the codes over: directly with SetSysCodes, or with a provider that
// ReFreshSysCodeBar asks every time (so a refresh after a save shows the stored
// codes).
#include <QString>

#include <functional>

class CSysCodeData;
class QWidget;
class QvKsSysCodeBar;

class IFaceBarCtrl
{
public:
    using DbClickFunc = void (*)();
    // Fills the specialty's name and a root node whose children are the top-level
    // codes; false when there is nothing to show (the bar then keeps what it has).
    using SysCodeProvider = std::function<bool(QString& spec, CSysCodeData& root)>;

    // The function the bar calls when the user double-clicks a code (null: none).
    // It runs after the double-click's own handling, with that code current.
    static void RegDbClickSysFunc(DbClickFunc func);
    // The current code, "&"-joined, or empty when none is chosen.
    static QString CurSysCode();
    // Makes `code` current and shows it selected. A code that is not among the
    // codes (an empty one included) leaves no code current.
    static void SetTreeItem(const QString& code);
    // Reloads the codes from the provider and redraws the bar; the current code
    // stays current when it still exists.
    static void ReFreshSysCodeBar();

    // The host's side.
    static void SetSysCodeProvider(SysCodeProvider provider);
    static void SetSysCodes(const QString& spec, const CSysCodeData& root);
    static QString CurSpec();
    static const CSysCodeData& SysCodes();
    // Creates the bar widget (one at a time: a new one replaces the old as the view
    // that mirrors the state). The caller owns it, usually through a dock.
    static QvKsSysCodeBar* CreateSysCodeBar(QWidget* parent = nullptr);
    static QvKsSysCodeBar* SysCodeBar();

    // The canonical "&" name of a code given with either separator, in the codes'
    // own spelling (letter case is matched when no exact name exists); empty when no
    // such code exists.
    static QString ResolveCode(const QString& code);

    // Called by the bar widget on the user's actions.
    static void OnBarSelect(const QString& code);
    static void OnBarDbClick(const QString& code);
};
