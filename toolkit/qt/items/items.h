// The adapters of each item kind (see item.h), made by makeAdapter.
#pragma once

#include <QIcon>

#include "item.h"

namespace toolkit::qt {

std::unique_ptr<ItemAdapter> makeButton(int n, Post post, QWidget* parent);
std::unique_ptr<ItemAdapter> makeCheckbox(int n, Post post, QWidget* parent);
std::unique_ptr<ItemAdapter> makeEdit(int n, Post post, QWidget* parent);
std::unique_ptr<ItemAdapter> makePopup(int n, Post post, QWidget* parent);
std::unique_ptr<ItemAdapter> makeStaticText(int n, Post post, QWidget* parent);
std::unique_ptr<ItemAdapter> makeIcon(int n, Post post, QWidget* parent);
std::unique_ptr<ItemAdapter> makeList(int n, Post post, QWidget* parent);
std::unique_ptr<ItemAdapter> makeTextArea(int n, Post post, QWidget* parent, bool ownBar);
std::unique_ptr<ItemAdapter> makeScrollBar(int n, Post post, QWidget* parent);
std::unique_ptr<ItemAdapter> makeProgress(int n, Post post, QWidget* parent);

}  // namespace toolkit::qt

namespace toolkit::qt {

// Static texts: the height the text needs at a width, and whether it scrolls in a view.
int neededTextHeight(ItemAdapter& staticText, int width);
void setTextScrolled(ItemAdapter& staticText, bool scrolled);
// Static texts, when no field takes the keys: the command key and C copies what a person selected;
// Page Up, Page Down, Home, End and the arrows scroll a text shown in a scrolling view. False when
// the key did nothing to this text.
bool textKey(ItemAdapter& staticText, const Event& event);
// The note, caution and stop icons of the icon theme (IconKind::Note, Caution, Stop), with the
// style's own as the fallback; null for other kinds.
QIcon themeIcon(IconKind kind);
// Buttons: the width the whole title needs, with the style's margins.
int neededButtonWidth(ItemAdapter& button);

}  // namespace toolkit::qt
