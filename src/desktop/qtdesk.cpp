// The desk on Qt: windows, message boxes, file dialogs, the modal loop, breathing, the printer.
#include "desktop/qtdesk.h"

#include "desktop/forms.h"
#include "desktop/icons.h"
#include "desktop/qtcanvas.h"
#include "toolkit/hand.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QColorDialog>
#include <QComboBox>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPageLayout>
#include <QPageSize>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QPushButton>
#include <QUrl>
#include <QWindow>

#include <cstdio>

namespace vael {
namespace {

QString Words(const std::string& utf8) { return QString::fromStdString(utf8); }

/// A job on the system's printer, or in a PDF that takes its place when it is whole.
class QtPrintJob : public PrintJob {
public:
    explicit QtPrintJob(const PrintOrder& order) : file_(Words(order.File)) {
        printer_.setDocName(Words(order.Title));
        printer_.setCreator(QStringLiteral("VaelAna"));
        if (!file_.isEmpty()) {
            printer_.setOutputFormat(QPrinter::PdfFormat);
            printer_.setOutputFileName(Part());
            printer_.setPageSize(QPageSize(QPageSize::A4));
        }
        printer_.setPageOrientation(order.Landscape ? QPageLayout::Landscape
                                                    : QPageLayout::Portrait);
        printer_.setFullPage(true);  // a page counts from the sheet's corner
        page_ = std::make_unique<PrinterSurface>(printer_);
    }
    ~QtPrintJob() override {
        if (!ended_ && file_.isEmpty()) printer_.abort();  // what was not ended is not wanted
        page_->Finish();
        if (!file_.isEmpty()) QFile::remove(Part());
    }
    [[nodiscard]] bool Start() { return page_->Start(); }
    Surface& Page() override { return *page_; }
    bool NextPage() override { return page_->NextPage(); }
    bool End() override {
        ended_ = true;
        page_->Finish();
        if (printer_.printerState() == QPrinter::Error) return false;
        if (file_.isEmpty()) return true;
        return std::rename(QFile::encodeName(Part()).constData(),
                           QFile::encodeName(file_).constData()) == 0;
    }

private:
    [[nodiscard]] QString Part() const { return file_ + QStringLiteral(".part"); }
    bool ended_ = false;
    QString file_;
    QPrinter printer_{QPrinter::HighResolution};
    std::unique_ptr<PrinterSurface> page_;
};

using KeyName = KeyPress::Name;

KeyName NameOf(const QKeyEvent& event) {
    // Only the number pad's signs are keys of the view; its point is a comma in some countries.
    if (event.modifiers().testFlag(Qt::KeypadModifier)) {
        switch (event.key()) {
            case Qt::Key_Plus: return KeyName::Add;
            case Qt::Key_Minus: return KeyName::Subtract;
            case Qt::Key_Period:
            case Qt::Key_Comma: return KeyName::Decimal;
            default: break;
        }
    }
    if (event.key() >= Qt::Key_F1 && event.key() <= Qt::Key_F12)
        return static_cast<KeyName>(static_cast<int>(KeyName::F1) + event.key() - Qt::Key_F1);
    switch (event.key()) {
        case Qt::Key_Left: return KeyName::Left;
        case Qt::Key_Right: return KeyName::Right;
        case Qt::Key_Up: return KeyName::Up;
        case Qt::Key_Down: return KeyName::Down;
        case Qt::Key_PageUp: return KeyName::PageUp;
        case Qt::Key_PageDown: return KeyName::PageDown;
        case Qt::Key_Home: return KeyName::Home;
        case Qt::Key_End: return KeyName::End;
        case Qt::Key_Return:
        case Qt::Key_Enter: return KeyName::Enter;
        case Qt::Key_Escape: return KeyName::Escape;
        case Qt::Key_Space: return KeyName::Space;
        case Qt::Key_Delete: return KeyName::Delete;
        default: return KeyName::Other;
    }
}

KeyPress PressOf(const QKeyEvent& event) {
    return {.Key = NameOf(event),
            .Shift = event.modifiers().testFlag(Qt::ShiftModifier),
            .Ctrl = event.modifiers().testFlag(Qt::ControlModifier),
            .Alt = event.modifiers().testFlag(Qt::AltModifier)};
}

bool IsUserAct(QEvent::Type type) {
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::ContextMenu:
        case QEvent::TouchBegin: return true;
        default: return false;
    }
}

/// A box with a text cursor in it.
bool IsTypedIn(const QObject& target) {
    if (const auto* line = qobject_cast<const QLineEdit*>(&target)) return !line->isReadOnly();
    if (const auto* text = qobject_cast<const QPlainTextEdit*>(&target)) return !text->isReadOnly();
    const auto* list = qobject_cast<const QComboBox*>(&target);
    return list != nullptr && list->isEditable();
}

/// The box that a cell of a grid has while it is typed over.
bool IsCellEditor(const QObject& target) {
    const QObject* ground = IsTypedIn(target) ? target.parent() : nullptr;
    return ground != nullptr && qobject_cast<const QAbstractItemView*>(ground->parent()) != nullptr;
}

/// Whether a widget needs the key itself, before the view: a box that is typed in needs all but
/// Escape and the function keys, and in a grid's cell Escape too, which takes the typing back; an
/// open list, and a list or grid that stands open, needs the keys that move and pick in it.
bool NeedsKey(const QObject& target, const KeyPress& press) {
    const bool function = press.Key >= KeyName::F1 && press.Key <= KeyName::F12;
    const auto* widget = qobject_cast<const QWidget*>(&target);
    if (widget != nullptr && widget->window()->windowType() == Qt::Popup) return true;
    if (IsCellEditor(target)) return !function;
    if (IsTypedIn(target)) return !function && press.Key != KeyName::Escape;
    if (qobject_cast<const QAbstractItemView*>(&target) == nullptr || press.Alt) return false;
    return !function && press.Key != KeyName::Escape && press.Key != KeyName::Delete &&
           press.Key != KeyName::Add && press.Key != KeyName::Subtract &&
           press.Key != KeyName::Decimal;
}

/// Whether a box that is typed in keeps a key from being a shortcut: a plain one.
bool KeepsFromShortcuts(const QObject& target, const QKeyEvent& event) {
    const bool plain = !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    return plain && IsTypedIn(target) && NeedsKey(target, PressOf(event));
}

}  // namespace

QStringList QtFilters(const std::string& filter) {
    const QStringList pieces = Words(filter).split(QLatin1Char('|'));
    QStringList out;
    for (qsizetype i = 0; i + 1 < pieces.size(); i += 2) {
        QString text = pieces[i];
        const qsizetype bracket = text.indexOf(QStringLiteral(" ("));
        if (bracket > 0) text.truncate(bracket);  // Qt writes the masks itself
        QString masks = pieces[i + 1];
        out << text + QStringLiteral(" (") + masks.replace(QLatin1Char(';'), QLatin1Char(' ')) +
                   QLatin1Char(')');
    }
    return out;
}

QtDesk::QtDesk() {
    UseDesk(this);
    forms_ = MakeForms();
    qApp->installEventFilter(this);
}

QtDesk::~QtDesk() {
    qApp->removeEventFilter(this);
    while (busy_ > 0) Busy(false);
    UseDesk(nullptr);
}

Form* QtDesk::FormOfView(const View& view) const {
    for (const auto& form : forms_)
        if (&form->Shown() == &view) return form.get();
    return nullptr;
}

QWidget* QtDesk::Above() const {
    QWidget* active = QApplication::activeWindow();
    if (active != nullptr || forms_.empty()) return active;
    return forms_.front().get();
}

Answer QtDesk::Ask(const Question& question) {
    Show();
    QMessageBox box(Above());
    box.setWindowTitle(question.Title.empty() ? QStringLiteral("VaelAna") : Words(question.Title));
    box.setTextFormat(Qt::PlainText);
    box.setText(Words(question.Text));
    if (question.Icon == Question::Sign::Exclamation) box.setIcon(QMessageBox::Warning);
    if (question.Icon == Question::Sign::Question) box.setIcon(QMessageBox::Question);
    if (question.Choice == Question::Buttons::Ok) {
        box.setStandardButtons(QMessageBox::Ok);
        box.exec();
        return Answer::Ok;
    }
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(question.Default() == Answer::Yes ? QMessageBox::Yes : QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

std::optional<FileChoice> QtDesk::OpenFiles(const FileDialog& dialog) {
    Show();
    QFileDialog box(Above(), Words(dialog.Title), Words(dialog.Folder));
    box.setFileMode(dialog.Multiple ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    const QStringList filters = QtFilters(dialog.Filter);
    // Kinds that stand in no list are reached by typing the name.
    box.setNameFilters(filters);
    box.selectNameFilter(filters.value(dialog.FilterIndex - 1));
    if (!dialog.Name.empty()) box.selectFile(Words(dialog.Name));
    if (box.exec() != QDialog::Accepted || box.selectedFiles().isEmpty()) return std::nullopt;
    FileChoice choice;
    for (const QString& path : box.selectedFiles()) choice.Paths.push_back(path.toStdString());
    const auto index = filters.indexOf(box.selectedNameFilter());
    choice.FilterIndex = index < 0 ? dialog.FilterIndex : static_cast<int>(index) + 1;
    return choice;
}

std::optional<FileChoice> QtDesk::SaveFile(const FileDialog& dialog) {
    Show();
    QFileDialog box(Above(), Words(dialog.Title), Words(dialog.Folder));
    box.setAcceptMode(QFileDialog::AcceptSave);
    box.setFileMode(QFileDialog::AnyFile);
    box.setOption(QFileDialog::DontConfirmOverwrite);  // the writers ask themselves
    const QStringList filters = QtFilters(dialog.Filter);
    box.setNameFilters(filters);
    box.selectNameFilter(filters.value(dialog.FilterIndex - 1));
    if (!dialog.Name.empty()) box.selectFile(Words(dialog.Name));
    if (box.exec() != QDialog::Accepted || box.selectedFiles().isEmpty()) return std::nullopt;
    FileChoice choice;
    QString path = box.selectedFiles().constFirst();
    const auto index = filters.indexOf(box.selectedNameFilter());
    choice.FilterIndex = index < 0 ? dialog.FilterIndex : static_cast<int>(index) + 1;
    if (QFileInfo(path).suffix().isEmpty()) {
        const QString mask = box.selectedNameFilter().section(QStringLiteral("*."), 1);
        if (!path.endsWith(QLatin1Char('.'))) path += QLatin1Char('.');
        path += mask.section(QLatin1Char(')'), 0, 0).section(QLatin1Char(' '), 0, 0);
    }
    choice.Paths.push_back(path.toStdString());
    return choice;
}

std::optional<Colour> QtDesk::PickColour(Colour now) {
    const QColor picked = QColorDialog::getColor(ToQt(now), Above());
    if (!picked.isValid()) return std::nullopt;
    return Rgb(picked.red(), picked.green(), picked.blue());
}

std::vector<FolderItem> QtDesk::ListFolder(const std::string& path) {
    std::vector<FolderItem> items;
    const QDir folder(Words(path));
    for (const QFileInfo& info : folder.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot))
        items.push_back({info.fileName().toStdString(), info.isDir()});
    return items;
}

bool QtDesk::MakeFolder(const std::string& path) { return QDir().mkpath(Words(path)); }

void QtDesk::RunModal(View& view) {
    Form* form = FormOfView(view);
    if (form == nullptr) {
        view.Visible = false;
        return;
    }
    QWidget* above = Above();
    form->winId();  // makes the window, so that it can be tied to the one below it
    if (form->windowHandle() != nullptr && above != nullptr && above != form)
        form->windowHandle()->setTransientParent(above->windowHandle());
    Show();
    form->activateWindow();
    while (view.Visible && !quitting_)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    Show();
    if (above != nullptr) above->activateWindow();
}

void QtDesk::Breathe() {
    Show();
    QCoreApplication::processEvents();
}

void QtDesk::Busy(bool on) {
    if (on) {
        ++busy_;
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else if (busy_ > 0) {
        --busy_;
        QApplication::restoreOverrideCursor();
    }
}

bool QtDesk::Launch(const std::string& program, const std::vector<std::string>& words) {
    QStringList arguments;
    for (const std::string& word : words) arguments << Words(word);
    return QProcess::startDetached(Words(program), arguments);
}

bool QtDesk::OpenText(const std::string& path) {
    const QString file = Words(path);
    return QFileInfo::exists(file) && QDesktopServices::openUrl(QUrl::fromLocalFile(file));
}

bool QtDesk::HasPrinter() { return !QPrinterInfo::availablePrinterNames().isEmpty(); }

std::unique_ptr<PrintJob> QtDesk::StartPrintJob(const PrintOrder& order) {
    if (order.File.empty() && !HasPrinter()) return nullptr;
    auto job = std::make_unique<QtPrintJob>(order);
    if (!job->Start()) return nullptr;
    return job;
}

void QtDesk::StayOnTop(View& view, bool on) {
    view.OnTop = on;
    if (Form* form = FormOfView(view)) form->Bring();
}

void QtDesk::Show() {
    if (showing_) return;
    showing_ = true;
    QWidget* active = QApplication::activeWindow();
    for (const auto& form : forms_) form->Bring();
    // Keys go on in the main window when the one that had them is gone.
    if (active != nullptr && !active->isVisible() && FormOf(active) == active)
        forms_.front()->activateWindow();
    showing_ = false;
}

void QtDesk::Quit() {
    quitting_ = true;
    QCoreApplication::quit();
}

bool QtDesk::GiveKey(Form& form, QObject& target, const QEvent& event) {
    if (event.type() != QEvent::KeyPress) return false;
    const KeyPress press = PressOf(static_cast<const QKeyEvent&>(event));
    // Enter on a button is a click on that button, whatever the view does with Enter elsewhere.
    if (auto* button = qobject_cast<QPushButton*>(&target); button && press.Key == KeyName::Enter) {
        button->click();
        return true;
    }
    if (!form.Shown().KeyPreview || NeedsKey(target, press)) return false;
    // A key that a box had and let pass comes by again on its way up through the box's parents.
    const QWidget* focus = form.focusWidget();
    const auto* widget = qobject_cast<const QWidget*>(&target);
    if (focus != nullptr && widget != nullptr && widget->isAncestorOf(focus) &&
        NeedsKey(*focus, press))
        return false;
    return press.Key != KeyName::Other && vael::Key(form.Shown(), press);
}

bool QtDesk::eventFilter(QObject* target, QEvent* event) {
    if (!IsUserAct(event->type())) return false;
    Form* form = FormOf(target);
    if (form == nullptr) return false;
    if (!MayAct(form->Shown()) || !form->isVisible()) return true;
    if (event->type() == QEvent::ShortcutOverride &&
        KeepsFromShortcuts(*target, *static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return GiveKey(*form, *target, *event);
}

}  // namespace vael
