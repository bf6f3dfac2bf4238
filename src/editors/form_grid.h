// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QGridLayout>
#include <QLatin1String>
#include <QString>
#include <functional>
#include <initializer_list>

class QLabel;
class QPushButton;
class QRadioButton;
class QWidget;

namespace tavlo {

template <class Widget>
Widget* Named(Widget* widget, const char* name) {
  widget->setObjectName(QLatin1String(name));
  return widget;
}

/// A button that Enter does not press from elsewhere: it belongs to the entries, and a dialog is closed by a
/// press of its button alone.
[[nodiscard]] QPushButton* MakeButton(const QString& caption, const char* name, QWidget* inside);

/// Rows of controls of a dialog in common columns: label, entry, unit, slider, check box of a variable, list
/// of the variables. The blocks that forms share are laid out here, once for all dialogs; every control bears
/// its told name as object name, by which it is bound to its form.
class FormGrid {
 public:
  explicit FormGrid(QWidget* inside);

  /// Controls of an entry; those that it does not have are empty.
  struct Entry {
    const char* text;
    /// The label that the form captions, or a caption that stays.
    const char* unit = "";
    QString unit_caption = {};
    const char* slider = "";
    const char* from_variable = "";
    QString from_variable_caption = {};
    const char* variables = "";
    /// How many digits the entry is wide; 0 for the usual width.
    int digits = 0;
    /// How it is read out, if not as its label.
    QString spoken = {};
    QString slider_tip = {};
  };
  void AddEntry(const QString& label, const Entry& entry);
  /// The same under a label that the form captions.
  void AddEntry(const char* label_name, const QString& spoken, const Entry& entry);
  void AddList(const QString& label, const char* name, const QString& spoken = {});
  void AddList(const char* label_name, const QString& spoken, const char* name);
  /// The number of a line, with the text of that line behind it.
  void AddNumber(const QString& label, const char* name, const char* spin_button, const char* line_text);
  void AddCheckBox(const QString& caption, const char* name);
  struct CheckedNumber {
    const char* check_box;
    const char* number;
    const char* line_text;
    /// How the number is read out.
    QString spoken = {};
  };
  /// An entry with a check box in place of its label.
  void AddCheckedEntry(const QString& caption, const char* check_box, const Entry& entry);
  /// A check box with the number of a line behind it, and with the text of that line.
  void AddCheckedNumber(const QString& caption, const CheckedNumber& names);
  /// A caption over the lists of variables, in the row that is added next.
  void AddVariableHeading(const char* name);

  struct Option {
    const char* name;
    /// Empty for one that the form captions.
    QString caption = {};
    QString tool_tip = {};
  };
  /// In a frame of their own, or without a heading in none.
  void AddOptions(const QString& heading, std::initializer_list<Option> options);
  /// The same, one below the other.
  void AddOptionColumn(const QString& heading, std::initializer_list<Option> options);
  [[nodiscard]] static QRadioButton* MakeOption(const Option& option, QWidget* inside);
  /// A value that the form tells, and its unit.
  void AddValue(const QString& label, const char* name, const char* unit);
  /// The same under a label that the form captions.
  void AddValue(const char* label_name, const char* name, const char* unit);
  void AddNote(const char* name);
  /// A note of several rows, which the form tells.
  void AddParagraph(const char* name);
  /// A frame across all columns, whose own rows keep to them.
  [[nodiscard]] FormGrid AddFrame(const QString& heading, const char* name);
  /// A frame across all columns that the look lays out by itself.
  [[nodiscard]] QWidget* AddBox(const QString& heading);

  /// Gives the columns of frames the widths of those around them. To be called whenever captions have
  /// changed.
  [[nodiscard]] std::function<void()> Aligned(std::initializer_list<FormGrid> frames) const;

 private:
  void AddOptionsAlong(Qt::Orientation way, const QString& heading, std::initializer_list<Option> options);
  void AddValueBehind(QLabel* label, const char* name, const char* unit);
  void AddListBehind(QLabel* label, const QString& spoken, const char* name);
  void AddEntryBehind(QLabel* label, const QString& spoken, const Entry& entry);
  /// The entry itself. Returns its box.
  QWidget* PutEntry(const QString& spoken, const Entry& entry);
  /// Nothing stands in the column, nor across it.
  [[nodiscard]] bool IsEmpty(int column) const;
  /// What the widest thing in a column needs.
  [[nodiscard]] int Widest(int column) const;
  void Put(QWidget* widget, int column, int span = 1);
  void PutLineText(const char* name, int characters);

  QWidget* inside_;
  QGridLayout* grid_;
  int row_ = 0;
};

}  // namespace tavlo
