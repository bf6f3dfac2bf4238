// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/form_dialog.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QSlider>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <map>
#include <type_traits>

#include "editors/form_grid.h"
#include "editors/looks.h"
#include "qt/gui/shown_text.h"
#include "widgets/contrast.h"
#include "widgets/display_picture.h"
#include "widgets/entry_box.h"
#include "widgets/fitted_pane.h"
#include "widgets/level_gauge.h"
#include "widgets/profile_graph.h"
#include "widgets/prompt_box.h"
#include "widgets/spin_pair.h"
#include "widgets/takes_input.h"

namespace tavlo {
namespace {

// What did not change is not touched: the caret and the selection stay.

void Put(EntryBox& box, const TextBox& state) {
  if (const QString text = FromText(state.text); box.text() != text) box.setText(text);
}

void Put(PromptBox& box, const TextArea& state) {
  if (const QString text = FromText(state.text); box.Text() != text) box.SetText(text);
  box.SetLines(state.lines);
}

void Put(LevelGauge& gauge, const Gauge& state) {
  switch (state.level) {
    case Gauge::Level::Green: return gauge.Show(state.percent, LevelGauge::Level::Low);
    case Gauge::Level::Yellow: return gauge.Show(state.percent, LevelGauge::Level::High);
    case Gauge::Level::Red: return gauge.Show(state.percent, LevelGauge::Level::Full);
  }
}

void Put(DisplayPicture& picture, const Display& state) {
  QStringList lines;
  for (const std::string& line : state.lines) lines << FromText(line);
  picture.Show(lines, state.lines_for_text);
}

void Put(QSlider& slider, const Slider& state) {
  const QSignalBlocker quiet(slider);
  slider.setRange(state.min, state.max);
  slider.setValue(state.value);
}

void Put(QAbstractButton& button, bool on) {
  const QSignalBlocker quiet(button);
  button.setChecked(on);
}

void Put(QAbstractButton& button, const std::string& caption) {
  const QString text = FromText(caption);
  if (!text.isEmpty() && button.text() != text) button.setText(text);
}

/// A style draws a button lighter above than below, so that its ground must be far from the text.
constexpr double kButtonContrast = 2 * kTextContrast;

/// In the colours of a selection.
void Light(QAbstractButton& button, bool lit) {
  QPalette colours;
  if (lit) {
    const QPalette desktop = QApplication::palette(&button);
    const QColor text = desktop.color(QPalette::HighlightedText);
    colours.setColor(QPalette::ButtonText, text);
    colours.setColor(QPalette::Button, StandOut(desktop.color(QPalette::Highlight), text, kButtonContrast));
  }
  button.setPalette(colours);
}

void Put(QAbstractButton& button, const Button& state) {
  Put(button, state.caption);
  if (!state.tool_tip.empty()) button.setToolTip(FromText(state.tool_tip));
  Light(button, state.lit);
}

void Put(QComboBox& list, const ListBox& state) {
  const QSignalBlocker quiet(list);
  QStringList entries;
  for (const std::string& entry : state.list) entries << FromText(entry);
  QStringList shown;
  for (int i = 0; i < list.count(); ++i) shown << list.itemText(i);
  if (shown != entries) {
    list.clear();
    list.addItems(entries);
  }
  list.setCurrentIndex(state.index);
}

void Put(QTabWidget& tabs, const TabStrip& state) {
  const QSignalBlocker quiet(tabs);
  tabs.setCurrentIndex(state.page);
}

void Put(ProfileGraph& graph, const GraphBox& state) {
  graph.Show(state.curve, state.trace, FromText(state.x_caption), FromText(state.y_caption));
}

void Put(QLabel& label, const Label& state) {
  if (const QString caption = InOneLine(state.caption); label.text() != caption) label.setText(caption);
}

/// The widget of a control on which the operator does nothing.
template <class State>
struct ShownBy {};
template <>
struct ShownBy<Label> {
  using Widget = QLabel;
};
template <>
struct ShownBy<Gauge> {
  using Widget = LevelGauge;
};
template <>
struct ShownBy<Display> {
  using Widget = DisplayPicture;
};
template <>
struct ShownBy<GraphBox> {
  using Widget = ProfileGraph;
};

/// The Tab key goes to the option of a group that is on, or to the first that can have the focus if that
/// one cannot.
void LetTabReachOptions(QWidget& body) {
  std::map<const QObject*, QRadioButton*> reached;
  for (auto* option : body.findChildren<QRadioButton*>()) {
    option->setFocusPolicy(Qt::ClickFocus);
    if (!option->isEnabled() || option->isHidden()) continue;
    const QObject* group = option->group();
    QRadioButton*& best = reached[group != nullptr ? group : option->parent()];
    if (best == nullptr || option->isChecked()) best = option;
  }
  for (const auto& [group, option] : reached) option->setFocusPolicy(Qt::StrongFocus);
}

}  // namespace

FormDialog::FormDialog(const DialogNames& names, std::unique_ptr<ControlForm> form, MessageBoxes& boxes,
                       Help& help, QWidget* parent)
    : QDialog(parent),
      document_(names.help),
      boxes_(boxes),
      help_(help),
      form_(std::move(form)),
      body_(new QWidget(this)) {
  setObjectName(FromText(names.name));
  setWindowTitle(FromText(names.title));
  align_ = BuildLook(names.name, body_);
  auto* column = new QVBoxLayout(this);
  column->addWidget(body_);
  AddButtons(*column);
  column->setSizeConstraint(QLayout::SetFixedSize);
  BindAll();
  OrderTabs();
}

FormDialog::~FormDialog() = default;

void FormDialog::AddButtons(QVBoxLayout& column) {
  auto* row = new QHBoxLayout;
  row->addStretch(1);
  const auto add = [&](const QString& caption, const char* name) {
    QPushButton* button = MakeButton(caption, name, this);
    row->addWidget(button);
    return button;
  };
  connect(add(QStringLiteral("&OK"), "OK"), &QPushButton::clicked, this, &FormDialog::Confirm);
  connect(add(QStringLiteral("Cancel"), "Cancel"), &QPushButton::clicked, this, &FormDialog::reject);
  QPushButton* help = add(QStringLiteral("&Help"), "Help");
  help->setToolTip(QStringLiteral("Open the help of this dialog (F1)"));
  connect(help, &QPushButton::clicked, this, &FormDialog::OpenHelp);
  QPushButton* invisible = add(QString(), "invisible");
  invisible->hide();
  connect(invisible, &QPushButton::clicked, this, &FormDialog::TakeEntry);
  column.addLayout(row);
}

void FormDialog::BindAll() {
  for (const Bound& bound : form_->Controls().Rows()) {
    auto* widget = body_->findChild<QWidget*>(FromText(bound.name));
    Q_ASSERT_X(widget != nullptr, "FormDialog", bound.name.c_str());
    Bind(bound, widget);
    Control& common = CommonOf(bound.control);
    shows_.emplace_back([&common, widget] {
      widget->setEnabled(common.enabled);
      widget->setVisible(common.visible);
    });
  }
}

template <class Widget, class State>
void FormDialog::Show(Widget* widget, const State* state) {
  shows_.emplace_back([widget, state] { Put(*widget, *state); });
}

void FormDialog::Bind(const Bound& bound, QWidget* widget) {
  std::visit(
      [&](auto* state) {
        using State = std::remove_pointer_t<decltype(state)>;
        if constexpr (std::is_same_v<State, TextBox>) {
          auto* box = static_cast<EntryBox*>(widget);
          connect(box, &EntryBox::textEdited, this,
                  Act([this, &bound](const QString& text) { form_->Type(bound, ToText(text)); }));
          connect(box, &EntryBox::Left, this, Act([this, &bound] { form_->Leave(bound); }));
          Show(box, state);
        } else if constexpr (std::is_same_v<State, TextArea>) {
          auto* box = static_cast<PromptBox*>(widget);
          connect(box, &PromptBox::Edited, this,
                  Act([this, &bound](const QString& text) { form_->Type(bound, ToText(text)); }));
          Show(box, state);
        } else if constexpr (std::is_same_v<State, Slider>) {
          auto* slider = static_cast<QSlider*>(widget);
          connect(slider, &QSlider::valueChanged, this,
                  Act([this, &bound](int value) { form_->Move(bound, value); }));
          Show(slider, state);
        } else if constexpr (std::is_same_v<State, CheckBox> || std::is_same_v<State, OptionButton>) {
          auto* button = static_cast<QAbstractButton*>(widget);
          connect(button, &QAbstractButton::clicked, this,
                  Act([this, &bound](bool) { form_->Click(bound); }));
          shows_.emplace_back([button, state] {
            if constexpr (std::is_same_v<State, OptionButton>) Put(*button, state->caption);
            Put(*button, state->value);
          });
        } else if constexpr (std::is_same_v<State, Button>) {
          auto* button = static_cast<QAbstractButton*>(widget);
          connect(button, &QAbstractButton::clicked, this,
                  Act([this, &bound](bool) { form_->Click(bound); }));
          Show(button, state);
        } else if constexpr (std::is_same_v<State, ListBox>) {
          auto* list = static_cast<QComboBox*>(widget);
          connect(list, &QComboBox::activated, this,
                  Act([this, &bound](int index) { form_->Choose(bound, index); }));
          Show(list, state);
        } else if constexpr (std::is_same_v<State, TabStrip>) {
          auto* tabs = static_cast<QTabWidget*>(widget);
          connect(tabs, &QTabWidget::currentChanged, this,
                  Act([this, &bound](int page) { form_->Turn(bound, page); }));
          Show(tabs, state);
        } else if constexpr (requires { typename ShownBy<State>::Widget; }) {
          Show(static_cast<typename ShownBy<State>::Widget*>(widget), state);
        } else if constexpr (std::is_same_v<State, SpinButton>) {
          connect(static_cast<SpinPair*>(widget), &SpinPair::Pressed, this,
                  Act([this, &bound](int way) { form_->Spin(bound, way); }));
        }
      },
      bound.control);
}

void FormDialog::OrderTabs() {
  QWidget* before = nullptr;
  const auto next = [&before](QWidget* widget) {
    // A tab strip comes before what is on its pages, by itself.
    if (widget->focusPolicy() == Qt::NoFocus || qobject_cast<QTabWidget*>(widget) != nullptr) return;
    if (before != nullptr) setTabOrder(before, widget);
    before = widget;
  };
  for (const Bound& bound : form_->Controls().Rows()) next(body_->findChild<QWidget*>(FromText(bound.name)));
  for (const char* button : {"OK", "Cancel", "Help"}) next(findChild<QWidget*>(QLatin1String(button)));
}

bool FormDialog::Run() {
  ShowState();
  // So that it is placed by the size that it has for this line.
  body_->layout()->activate();
  layout()->activate();
  return exec() == Accepted;
}

void FormDialog::ShowState() {
  for (const auto& show : shows_) show();
  LetTabReachOptions(*body_);
  align_();
  if (pane_ == nullptr && !FittedPane::HasRoomFor(*body_)) PutIntoPane();
}

void FormDialog::PutIntoPane() {
  QWidget* focus = focusWidget();
  const QString title = windowTitle();
  layout()->removeWidget(body_);
  pane_ = new FittedPane(body_, title, this);
  static_cast<QVBoxLayout*>(layout())->insertWidget(0, pane_);
  pane_->show();
  if (focus != nullptr) focus->setFocus();
}

void FormDialog::GoToFirst() {
  GoTo(body_->findChild<QWidget*>(FromText(form_->First().name)));
}

void FormDialog::ShowStateAndGo() {
  // An entry that is hidden now is left at that, which is an act of its own.
  const Bound* control = form_->Caret();
  ShowState();
  if (control != nullptr) GoTo(body_->findChild<QWidget*>(FromText(control->name)));
}

void FormDialog::GoTo(QWidget* entry) {
  if (auto* const box = qobject_cast<EntryBox*>(entry)) box->deselect();
  // An entry whose value comes from a variable takes no focus; the next control does.
  const auto takes_it = [this](const QWidget& widget) {
    return widget.isEnabled() && widget.isVisibleTo(this) && (widget.focusPolicy() & Qt::TabFocus) != 0;
  };
  QWidget* next = entry;
  while (!takes_it(*next)) next = next->nextInFocusChain();
  next->setFocus();
  if (next != entry) return;
  if (auto* const box = qobject_cast<EntryBox*>(entry)) box->selectAll();
  if (auto* const box = qobject_cast<PromptBox*>(entry)) box->selectAll();
}

// What a choice brings up makes the dialog wider, wherever it stands.
void FormDialog::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  if (!isVisible()) return;
  const QRect room = screen()->availableGeometry();
  const QRect frame = frameGeometry();
  const QPoint beyond(std::max(0, frame.right() - room.right()), std::max(0, frame.bottom() - room.bottom()));
  const QPoint inside = frame.topLeft() - beyond;
  const QPoint wanted(std::max(room.left(), inside.x()), std::max(room.top(), inside.y()));
  if (wanted != frame.topLeft()) move(wanted);
}

void FormDialog::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  GoToFirst();
}

void FormDialog::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    findChild<QPushButton*>(QStringLiteral("invisible"))->click();
    return;
  }
  if (event->key() == Qt::Key_F1) return OpenHelp();
  QDialog::keyPressEvent(event);
}

void FormDialog::TakeEntry() {
  form_->Enter();
  ShowState();
  GoToFirst();
}

void FormDialog::Confirm() {
  // A button that was pressed without a hand acts a moment later, when the dialog may have been left.
  if (!TakesInput(*this)) return;
  const bool written = form_->Confirm(boxes_);
  ShowStateAndGo();
  if (written) accept();
}

void FormDialog::reject() {
  if (!TakesInput(*this)) return;
  form_->Cancel();
  QDialog::reject();
}

}  // namespace tavlo
