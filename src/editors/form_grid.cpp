// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/form_grid.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QScreen>
#include <QSlider>
#include <algorithm>
#include <utility>
#include <vector>

#include "widgets/entry_box.h"
#include "widgets/font_size.h"
#include "widgets/line_text.h"
#include "widgets/spin_pair.h"

namespace tavlo {
namespace {

enum FormColumn {
  LabelColumn,
  EntryColumn,
  UnitColumn,
  SliderColumn,
  FromVariableColumn,
  VariablesColumn,
  Columns
};

constexpr int kNumberDigits = 12;
constexpr int kLineDigits = 4;
constexpr int kLineTextAlone = 34;
constexpr int kLineTextInTable = 20;
constexpr int kSliderWidth = 150;
constexpr int kShortestSlider = 64;
constexpr int kBesideSlider = 480;

/// Shorter where the text is large and the screen is not.
int SliderWidth(const QWidget& inside) {
  const QFontMetrics font = inside.fontMetrics();
  const int room = inside.screen()->availableSize().width() - ByFont(font, kBesideSlider);
  return std::clamp(room, ByFont(font, kShortestSlider), ByFont(font, kSliderWidth));
}

/// A caption as it is read out.
QString Spoken(QString caption) {
  return caption.remove(QLatin1Char('&'));
}

}  // namespace

QPushButton* MakeButton(const QString& caption, const char* name, QWidget* inside) {
  auto* button = Named(new QPushButton(caption, inside), name);
  button->setAutoDefault(false);
  return button;
}

FormGrid::FormGrid(QWidget* inside) : inside_(inside), grid_(new QGridLayout(inside)) {
  grid_->setColumnStretch(Columns, 1);
}

void FormGrid::Put(QWidget* widget, int column, int span) {
  // What is hidden keeps its place, so that nothing jumps when it comes back.
  QSizePolicy policy = widget->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  widget->setSizePolicy(policy);
  grid_->addWidget(widget, row_, column, 1, span,
                   span == 1 && column != SliderColumn ? Qt::AlignLeft : Qt::Alignment());
}

void FormGrid::PutLineText(const char* name, int characters) {
  Put(Named(new LineText(characters, inside_), name), UnitColumn, Columns + 1 - UnitColumn);
}

void FormGrid::AddEntry(const QString& label, const Entry& entry) {
  AddEntryBehind(new QLabel(label, inside_), entry.spoken.isEmpty() ? Spoken(label) : entry.spoken, entry);
}

void FormGrid::AddEntry(const char* label_name, const QString& spoken, const Entry& entry) {
  AddEntryBehind(Named(new QLabel(inside_), label_name), spoken, entry);
}

void FormGrid::AddEntryBehind(QLabel* label, const QString& spoken, const Entry& entry) {
  Put(label, LabelColumn);
  label->setBuddy(PutEntry(spoken, entry));
  ++row_;
}

void FormGrid::AddCheckedEntry(const QString& caption, const char* check_box, const Entry& entry) {
  Put(Named(new QCheckBox(caption, inside_), check_box), LabelColumn);
  PutEntry(Spoken(caption), entry);
  ++row_;
}

QWidget* FormGrid::PutEntry(const QString& spoken, const Entry& entry) {
  auto* text = Named(new EntryBox(entry.digits == 0 ? kNumberDigits : entry.digits, inside_), entry.text);
  text->setAccessibleName(spoken);
  Put(text, EntryColumn);
  if (*entry.unit != 0 || !entry.unit_caption.isEmpty()) {
    Put(Named(new QLabel(entry.unit_caption, inside_), entry.unit), UnitColumn);
  }
  if (*entry.slider != 0) {
    auto* slider = Named(new QSlider(Qt::Horizontal, inside_), entry.slider);
    slider->setAccessibleName(spoken + QStringLiteral(", slider"));
    slider->setMinimumWidth(SliderWidth(*inside_));
    slider->setToolTip(entry.slider_tip);
    Put(slider, SliderColumn);
  }
  if (*entry.from_variable != 0) {
    // Where there is no slider its place is free for a long caption.
    const int column = *entry.slider != 0 ? FromVariableColumn : SliderColumn;
    Put(Named(new QCheckBox(entry.from_variable_caption, inside_), entry.from_variable), column,
        VariablesColumn - column);
    auto* variables = Named(new QComboBox(inside_), entry.variables);
    variables->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    variables->setAccessibleName(spoken + QStringLiteral(", variable"));
    Put(variables, VariablesColumn);
  }
  return text;
}

void FormGrid::AddList(const QString& label, const char* name, const QString& spoken) {
  AddListBehind(new QLabel(label, inside_), spoken.isEmpty() ? Spoken(label) : spoken, name);
}

void FormGrid::AddList(const char* label_name, const QString& spoken, const char* name) {
  AddListBehind(Named(new QLabel(inside_), label_name), spoken, name);
}

void FormGrid::AddListBehind(QLabel* label, const QString& spoken, const char* name) {
  auto* list = Named(new QComboBox(inside_), name);
  list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  list->setAccessibleName(spoken);
  label->setBuddy(list);
  Put(label, LabelColumn);
  Put(list, EntryColumn, SliderColumn - EntryColumn);
  ++row_;
}

void FormGrid::AddNumber(const QString& label, const char* name, const char* spin_button,
                         const char* line_text) {
  auto* caption = new QLabel(label, inside_);
  auto* box = Named(new EntryBox(kLineDigits, inside_), name);
  box->setAccessibleName(Spoken(label));
  caption->setBuddy(box);
  auto* both = new QHBoxLayout;
  both->setSpacing(0);
  both->addWidget(box);
  both->addWidget(Named(new SpinPair(Spoken(label).toLower(), box), spin_button));
  Put(caption, LabelColumn);
  grid_->addLayout(both, row_, EntryColumn, Qt::AlignLeft);
  PutLineText(line_text, kLineTextAlone);
  ++row_;
}

void FormGrid::AddCheckBox(const QString& caption, const char* name) {
  Put(Named(new QCheckBox(caption, inside_), name), LabelColumn, Columns + 1);
  ++row_;
}

void FormGrid::AddCheckedNumber(const QString& caption, const CheckedNumber& names) {
  Put(Named(new QCheckBox(caption, inside_), names.check_box), LabelColumn);
  auto* box = Named(new EntryBox(kLineDigits, inside_), names.number);
  box->setAccessibleName(names.spoken);
  Put(box, EntryColumn);
  PutLineText(names.line_text, kLineTextInTable);
  ++row_;
}

void FormGrid::AddVariableHeading(const char* name) {
  Put(Named(new QLabel(inside_), name), VariablesColumn);
}

QRadioButton* FormGrid::MakeOption(const Option& option, QWidget* inside) {
  auto* button = Named(new QRadioButton(option.caption, inside), option.name);
  button->setToolTip(option.tool_tip);
  return button;
}

void FormGrid::AddOptions(const QString& heading, std::initializer_list<Option> options) {
  AddOptionsAlong(Qt::Horizontal, heading, options);
}

void FormGrid::AddOptionColumn(const QString& heading, std::initializer_list<Option> options) {
  AddOptionsAlong(Qt::Vertical, heading, options);
}

void FormGrid::AddOptionsAlong(Qt::Orientation way, const QString& heading,
                               std::initializer_list<Option> options) {
  auto* frame = heading.isEmpty() ? new QWidget(inside_) : new QGroupBox(heading, inside_);
  auto* row =
      new QBoxLayout(way == Qt::Horizontal ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom, frame);
  if (heading.isEmpty()) row->setContentsMargins({});
  for (const Option& option : options) row->addWidget(MakeOption(option, frame));
  row->addStretch(1);
  Put(frame, LabelColumn, Columns + 1);
  ++row_;
}

void FormGrid::AddValue(const QString& label, const char* name, const char* unit) {
  AddValueBehind(new QLabel(label, inside_), name, unit);
}

void FormGrid::AddValue(const char* label_name, const char* name, const char* unit) {
  AddValueBehind(Named(new QLabel(inside_), label_name), name, unit);
}

void FormGrid::AddValueBehind(QLabel* label, const char* name, const char* unit) {
  auto* value = Named(new QLabel(inside_), name);
  label->setBuddy(value);
  auto* row = new QHBoxLayout;
  for (QLabel* each : {label, value, Named(new QLabel(inside_), unit)}) row->addWidget(each);
  row->addStretch(1);
  grid_->addLayout(row, row_, LabelColumn, 1, Columns + 1);
  ++row_;
}

void FormGrid::AddNote(const char* name) {
  Put(Named(new QLabel(inside_), name), LabelColumn, Columns + 1);
  ++row_;
}

void FormGrid::AddParagraph(const char* name) {
  auto* text = Named(new QLabel(inside_), name);
  text->setWordWrap(true);
  grid_->addWidget(text, row_, LabelColumn, 1, Columns + 1);
  ++row_;
}

QWidget* FormGrid::AddBox(const QString& heading) {
  auto* frame = new QGroupBox(heading, inside_);
  Put(frame, LabelColumn, Columns + 1);
  ++row_;
  return frame;
}

FormGrid FormGrid::AddFrame(const QString& heading, const char* name) {
  auto* frame = Named(new QGroupBox(heading, inside_), name);
  Put(frame, LabelColumn, Columns + 1);
  ++row_;
  return FormGrid(frame);
}

std::function<void()> FormGrid::Aligned(std::initializer_list<FormGrid> frames) const {
  std::vector<FormGrid> grids(frames);
  grids.push_back(*this);
  return [grids, outer = inside_] {
    for (int column = 0; column < Columns; ++column) {
      const auto inset = [&](const FormGrid& grid) {
        if (column > 0 || grid.inside_ == outer) return 0;
        return grid.inside_->contentsMargins().left() + grid.grid_->contentsMargins().left();
      };
      int widest = 0;
      for (const FormGrid& grid : grids) widest = std::max(widest, grid.Widest(column) + inset(grid));
      for (const FormGrid& grid : grids) {
        // The layout leaves no gap beside a column in which nothing stands.
        const int gap = grid.IsEmpty(column) ? grid.grid_->horizontalSpacing() : 0;
        grid.grid_->setColumnMinimumWidth(column, widest == 0 ? 0 : widest - inset(grid) + gap);
      }
    }
  };
}

bool FormGrid::IsEmpty(int column) const {
  for (int i = 0; i < grid_->count(); ++i) {
    int row = 0;
    int first = 0;
    int rows = 0;
    int columns = 0;
    grid_->getItemPosition(i, &row, &first, &rows, &columns);
    if (first <= column && column < first + columns) return false;
  }
  return true;
}

int FormGrid::Widest(int column) const {
  int widest = 0;
  for (int i = 0; i < grid_->count(); ++i) {
    int row = 0;
    int first = 0;
    int rows = 0;
    int columns = 0;
    grid_->getItemPosition(i, &row, &first, &rows, &columns);
    if (first == column && columns == 1) widest = std::max(widest, grid_->itemAt(i)->sizeHint().width());
  }
  return widest;
}

}  // namespace tavlo
