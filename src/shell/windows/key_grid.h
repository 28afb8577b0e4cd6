// The keys of objects as a list of two columns that is edited in place: a box over the cell, or a
// list to choose from where the class gives one.
#pragma once

#include "shell/system/win32.h"

#include <commctrl.h>

#include <string>
#include <vector>

#include "operations/entity_keys.h"

namespace ferrowand {

class KeyGridHost {
 public:
  virtual ~KeyGridHost() = default;

  // Another row is chosen.
  virtual void OnRowChosen() = 0;
  // What is typed from now on is for the objects that are shown now.
  virtual void OnEditBegun() = 0;
  // What can be chosen besides what is typed.
  virtual std::vector<KeyChoice> ChoicesOf(const KeyRow& row) const = 0;
  // Whether the value is not typed here.
  virtual bool IsLocked(const KeyRow& row) const = 0;
  // Each of them false, after saying why, where it cannot be.
  virtual bool ChangeValue(const KeyRow& row, const std::string& value) = 0;
  virtual bool RenameKey(const KeyRow& row, const std::string& name) = 0;
  virtual bool CheckNewName(const std::string& name) = 0;
  virtual void RemoveKey(const KeyRow& row) = 0;
  // Says why something cannot be typed, without a box.
  virtual void Tell(const std::string& why) = 0;
  virtual void Refuse(const std::string& why) = 0;
};

class KeyGrid {
 public:
  // Controls of the parent, which hands its notifications on; the host outlives it.
  KeyGrid(HWND parent, int id, KeyGridHost& host);
  KeyGrid(const KeyGrid&) = delete;
  KeyGrid& operator=(const KeyGrid&) = delete;

  HWND Handle() const { return list_; }
  void Place(int left, int top, int width, int height) const;
  // Behind the rows stands one for a new key, unless nothing is edited.
  void Show(const std::vector<KeyRow>& rows, bool takesNew);
  // Null where none is chosen, or the one for a new key.
  const KeyRow* Chosen() const;
  void Choose(const std::string& name) const;

  bool IsEditing() const { return editor_ != nullptr; }
  HWND Editor() const { return editor_; }
  // Of the chosen row.
  void EditValue() { Edit(ChosenIndex(), VALUE); }
  void EditNewKey();
  // What is typed goes to its objects. False, and it stays to be mended, where it cannot be.
  bool Commit();
  void Drop() { Close(); }

  LRESULT OnNotify(const NMHDR& header, LPARAM lParam);

 private:
  enum Column { NAME, VALUE };

  static LRESULT CALLBACK ListFunc(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                   DWORD_PTR grid);
  static LRESULT CALLBACK EditorFunc(HWND editor, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR, DWORD_PTR grid);

  int ChosenIndex() const;
  std::wstring TextOf(std::size_t index, int column) const;
  void GiveText(NMLVDISPINFOW& info);
  LRESULT Draw(NMLVCUSTOMDRAW& draw) const;
  void Edit(int index, Column column);
  void EditRow(const KeyRow& row, int index, Column column);
  void OpenBox(const RECT& cell);
  void OpenList(const RECT& cell, const std::vector<KeyChoice>& choices);
  void Close();
  bool Take(const std::wstring& typed);
  bool TakeName(const std::string& name);
  bool TakeValue(const std::string& value);
  bool OnListKey(WPARAM key);
  bool OnEditorKey(WPARAM key);
  void LeaveBy(WPARAM key);
  void OnEditorLeft(HWND to);

  HWND list_;
  KeyGridHost& host_;
  std::vector<KeyRow> rows_;
  bool takesNew_ = false;
  std::wstring shown_;  // what the system was given last

  HWND editor_ = nullptr;
  HWND text_ = nullptr;  // the editor itself, or the text box in it
  KeyRow edited_;        // as it was when that began
  Column column_ = VALUE;
  bool isNew_ = false;  // the name of a key that is not there yet
  std::wstring initial_;
  std::vector<KeyChoice> choices_;
  bool isCommitting_ = false;
};

// A value as a window shows it, and back: the game's letters, or the system's for the editor's own
// keys and for names of files. Nothing where there is no such letter.
std::wstring ShownValue(const std::string& name, const std::string& value);
std::optional<std::string> TypedValue(const std::string& name, const std::wstring& text);

}  // namespace ferrowand
