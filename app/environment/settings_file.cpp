#include "app/environment/settings_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextCodec>
#include <cstdio>

#include "app/environment/paths.h"
#include "components/utils/file.h"

namespace zorvanelink::ui {
namespace {

QString const kDraftSuffix = QStringLiteral(".save-");

// UTF-8 for writing. QSettings hands over one UTF-16 unit at a time, and the plain codec makes
// question marks of the halves of a character outside the first plane. GUI thread.
class UnitwiseUtf8 : public QTextCodec {
  public:
    QByteArray name() const override { return QByteArrayLiteral("UTF-8-unitwise"); }
    int mibEnum() const override { return kPrivateMib; }

  protected:
    QString convertToUnicode(char const* bytes, int size, ConverterState*) const override {
        return QString::fromUtf8(bytes, size);
    }
    QByteArray convertFromUnicode(QChar const* units, int size, ConverterState*) const override {
        QString text(units, size);
        if (!text.isEmpty() && text.at(0).isLowSurrogate() && !high_half_.isNull()) {
            text.prepend(high_half_);
        }
        high_half_ = QChar();  // one that found no other half belongs to no text
        if (!text.isEmpty() && text.at(text.size() - 1).isHighSurrogate()) {
            high_half_ = text.at(text.size() - 1);
            text.chop(1);
        }
        return text.toUtf8();
    }

  private:
    static constexpr int kPrivateMib = -4711;
    mutable QChar high_half_;
};

// Qt owns every codec and deletes it at the end of the program.
QTextCodec* writingCodec() {
    static QTextCodec* const codec = new UnitwiseUtf8;
    return codec;
}

// A link to the file stays a link.
QString resolved(QString const& path) {
    QString const target = QFileInfo(path).canonicalFilePath();
    return target.isEmpty() ? path : target;
}

bool replaceBy(QString const& from, QString const& to) {
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

QString textOf(QVariant const& value) {
    return value.type() == QVariant::StringList ? value.toStringList().join(QLatin1Char(','))
                                                : value.toString();
}

// A file made elsewhere may hold keys and texts that no program can get at or write again: an empty
// section, another spelling of "General", half a character. They must not stop every save.
bool isWritable(QSettings const& file, QString const& key) {
    static QString const general = QStringLiteral("General/");
    bool const other_spelling =
        key.startsWith(general, Qt::CaseInsensitive) && !key.startsWith(general);
    return !key.isEmpty() && !other_spelling && file.contains(key) &&
           textOf(file.value(key)).isValidUtf16();
}

bool holdsAllOf(QSettings const& expected, QSettings const& found) {
    if (found.status() != QSettings::NoError) {
        return false;
    }
    for (QString const& key : expected.allKeys()) {
        if (isWritable(expected, key) &&
            (!found.contains(key) || textOf(found.value(key)) != textOf(expected.value(key)))) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool RewriteSettings(QString const& path, std::function<bool(QSettings&)> const& change) {
    using namespace components::utils;
    QString const target = resolved(path);
    QTemporaryDir const folder(target + kDraftSuffix + QStringLiteral("XXXXXX"));
    QString const draft = folder.filePath(QStringLiteral("draft.ini"));
    std::string old;
    if (!folder.isValid() ||
        (QFile::exists(target) &&
         !ReadContentFromFile(QFile::encodeName(target).toStdString(), old)) ||
        !WritePrivateFile(QFile::encodeName(draft).toStdString(), old)) {
        return false;
    }
    QSettings file(draft, QSettings::IniFormat);
    file.setIniCodec(writingCodec());
    if (!change(file)) {
        return false;
    }
    file.sync();
    if (static_cast<std::size_t>(QFileInfo(draft).size()) > kMaxContentSize) {
        return false;  // it could never be read again
    }
    // QSettings does not notice when the disk is full: it would leave a file that breaks off.
    // Under the draft's own name it would answer from memory.
    QString const written = folder.filePath(QStringLiteral("written.ini"));
    if (!replaceBy(draft, written)) {
        return false;
    }
    QSettings readBack(written, QSettings::IniFormat);
    readBack.setIniCodec("UTF-8");
    return holdsAllOf(file, readBack) && replaceBy(written, target);
}

void RemoveSettingsDrafts(QString const& path) {
    QFileInfo const target(resolved(path));
    QDir const folder = target.dir();
    QString const prefix = target.fileName() + kDraftSuffix;
    // Looked at here: a pattern would load the library of regular expressions at every start.
    for (QString const& entry : folder.entryList(QDir::Dirs | QDir::Hidden | QDir::NoSymLinks)) {
        if (entry.startsWith(prefix)) {
            QDir(folder.filePath(entry)).removeRecursively();
        }
    }
}

}  // namespace zorvanelink::ui
