// The look of the help's window: a navy sign with a brass rim over cream paper.
#pragma once

namespace quillon {

inline constexpr const char* kHelpStyle = R"(
QWidget#helpWindow { background: #EEE8C4; }
QWidget#sign { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #1A1A9C, stop:1 #000060);
  border-bottom: 3px solid #B8892B; }
QLabel, QPushButton, QToolButton, QTabBar, QTreeWidget, QListWidget, QLineEdit {
  font-family: 'DejaVu Sans', Verdana, sans-serif; }
QLabel#signText { color: #FFF9D5; font-size: 17px; font-weight: bold; letter-spacing: 1px; }
QPushButton { color: #FFF9D5; background: #000080; border: 2px solid #B8892B; border-radius: 4px;
  padding: 4px 12px; font-size: 13px; font-weight: bold; }
QPushButton:hover, QPushButton:focus { background: #2A2AB8; border-color: #FFE08A; }
QPushButton:focus { outline: 1px dashed #FFF3A8; outline-offset: -4px; }
QPushButton:pressed { background: #000050; }
QPushButton:disabled { color: #7C7CB0; background: #00004A; border-color: #6E5526; }
QTabWidget::pane { background: #FFF9D5; border: 2px solid #B8892B; top: -2px; }
QTabBar { background: transparent; font-size: 13px; }
QTabBar::tab { color: #FFF9D5; background: #000080; border: 2px solid #B8892B; padding: 4px 9px;
  border-top-left-radius: 5px; border-top-right-radius: 5px; }
QTabBar::tab:selected { color: #000080; background: #FFF9D5; border-bottom-color: #FFF9D5; font-weight: bold; }
QTabBar::tab:!selected { margin-top: 3px; }
QTabBar::tab:!selected:hover, QTabBar::tab:!selected:focus { background: #2A2AB8; }
QTreeWidget, QListWidget { color: #141450; background: #FFF9D5; border: 2px solid #FFF9D5; font-size: 13px; outline: none; }
QTreeWidget:focus, QListWidget:focus { border-color: #000080; }
QTreeWidget::item { padding: 2px 0; }
QListWidget::item { padding: 2px 0; }
QTreeWidget::item:hover, QListWidget::item:hover { background: #EEE8C4; }
QTreeWidget::item:selected, QListWidget::item:selected { color: #FFF9D5; background: #000080; }
QLineEdit { color: #141450; background: #FFFEF4; border: 2px solid #B8892B; border-radius: 3px; padding: 3px;
  font-size: 13px; selection-color: #FFF9D5; selection-background-color: #000080; }
QLineEdit:focus { border-color: #000080; }
QLabel#findings { color: #141450; font-size: 12px; }
QTextBrowser { color: #141450; background: #FFFEF4; border: 2px solid #B8892B;
  selection-color: #FFF9D5; selection-background-color: #000080; }
QTextBrowser:focus { border-color: #000080; }
QSplitter::handle { background: transparent; }
QScrollBar:vertical { background: #E2DAB0; width: 13px; border: none; margin: 0; }
QScrollBar::handle:vertical { background: #B8892B; min-height: 24px; border-radius: 4px; margin: 1px 2px; }
QScrollBar::handle:vertical:hover { background: #D2A544; }
QScrollBar:horizontal { background: #E2DAB0; height: 13px; border: none; margin: 0; }
QScrollBar::handle:horizontal { background: #B8892B; min-width: 24px; border-radius: 4px; margin: 2px 1px; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: none; }
)";

}  // namespace quillon
