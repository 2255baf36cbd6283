#include "ArchiveReader.h"

#include <cmath>
#include <optional>
#include <QByteArray>
#include <QXmlStreamReader>
#include <utility>

#include <zelui/ArchiveError.h>

namespace zelui {

namespace {

const QLatin1String kVersion("4");

class MapReader {
public:
    explicit MapReader(const std::string& bytes)
        : mXml(QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()))) {}

    ArchiveList Read() {
        ExpectElement("prop.map");
        if (mXml.attributes().value(QLatin1String("version")) != kVersion) Fail("the version is not 4");
        ExpectElement("prop.list");
        ArchiveList list = ReadList(0);
        ExpectEnd();
        while (!mXml.atEnd()) Step();
        return list;
    }

private:
    [[noreturn]] void Fail(const std::string& message) const {
        ThrowArchiveError(static_cast<long>(mXml.lineNumber()), message);
    }

    /// One token on. Throws for what no archive has.
    QXmlStreamReader::TokenType Step() {
        const QXmlStreamReader::TokenType token = mXml.readNext();
        if (mXml.hasError()) Fail(mXml.errorString().toStdString());
        if (token == QXmlStreamReader::StartDocument) CheckEncoding();
        if (token == QXmlStreamReader::DTD) Fail("a document type");
        if (token == QXmlStreamReader::EntityReference) Fail("an entity of the archive's own");
        return token;
    }

    void CheckEncoding() const {
        const QString encoding = mXml.documentEncoding().toString();
        if (!encoding.isEmpty() && encoding.compare(QLatin1String("utf-8"), Qt::CaseInsensitive) != 0)
            Fail("the archive is not in UTF-8");
    }

    /// The next start or end of an element; only blanks and comments before it.
    QXmlStreamReader::TokenType NextTag() {
        while (true) {
            const QXmlStreamReader::TokenType token = Step();
            if (token == QXmlStreamReader::StartElement || token == QXmlStreamReader::EndElement) return token;
            if (token == QXmlStreamReader::EndDocument) Fail("the archive ends too early");
            if (token == QXmlStreamReader::Characters && !mXml.isWhitespace()) Fail("a text outside of a value");
        }
    }

    bool IsElement(const char* name) const { return mXml.name() == QLatin1String(name); }

    void ExpectElement(const char* name) {
        if (NextTag() != QXmlStreamReader::StartElement || !IsElement(name))
            Fail("<" + std::string(name) + "> is missing");
    }

    void ExpectEnd() {
        if (NextTag() != QXmlStreamReader::EndElement) Fail("an element too many");
    }

    // Reads up to the element's end.
    QString ReadText() {
        QString text;
        while (true) {
            const QXmlStreamReader::TokenType token = Step();
            if (token == QXmlStreamReader::EndElement) return text;
            if (token == QXmlStreamReader::StartElement) Fail("an element in a value");
            if (token != QXmlStreamReader::Characters) continue;
            text += mXml.text();
            if (static_cast<std::size_t>(text.size()) > kMaxArchiveText) Fail("a text is too long");
        }
    }

    ArchiveList ReadList(int depth) {
        if (depth >= kMaxArchiveDepth) Fail("lists stand too deep in each other");
        ArchiveList list(static_cast<long>(mXml.lineNumber()));
        while (NextTag() == QXmlStreamReader::StartElement) {
            if (!IsElement("prop.pair")) Fail("something else than a pair in a list");
            if (list.GetPairs().size() >= kMaxArchiveListLength) Fail("a list is too long");
            const long line = static_cast<long>(mXml.lineNumber());
            ExpectElement("key");
            const std::string key = ReadText().toStdString();
            if (key.empty() || key.size() > kMaxArchiveKey) Fail("a key is empty or too long");
            if (NextTag() != QXmlStreamReader::StartElement) Fail("\"" + key + "\" has no value");
            if (!list.Add({key, ReadValue(depth), line})) Fail("\"" + key + "\" is there twice");
            ExpectEnd();
        }
        return list;
    }

    ArchivePair::Value ReadValue(int depth) {
        if (IsElement("prop.list")) return ReadList(depth + 1);
        if (IsElement("int")) return ReadInteger();
        if (IsElement("float")) return ReadNumber();
        if (IsElement("true")) return ReadBoolean(true);
        if (IsElement("false")) return ReadBoolean(false);
        if (IsElement("string") || IsElement("ustring")) return ReadText().toStdString();
        Fail("<" + mXml.name().toString().toStdString() + "> is no kind of value");
    }

    std::int64_t ReadInteger() {
        const QXmlStreamAttributes attributes = mXml.attributes();
        const bool isSigned = attributes.value(QLatin1String("type")) == QLatin1String("signed");
        const bool isUnsigned = attributes.value(QLatin1String("type")) == QLatin1String("unsigned");
        if (!isSigned && !isUnsigned) Fail("a whole number that is neither signed nor unsigned");
        if (attributes.value(QLatin1String("size")) != QLatin1String("32")) Fail("a whole number without its size");
        bool isNumber = false;
        const qlonglong number = ReadText().trimmed().toLongLong(&isNumber, 10);
        const bool fits = isSigned ? number >= INT32_MIN && number <= INT32_MAX : number >= 0 && number <= UINT32_MAX;
        if (!isNumber || !fits) Fail("a whole number that is none, or too large");
        return number;
    }

    double ReadNumber() {
        bool isNumber = false;
        const double number = ReadText().trimmed().toDouble(&isNumber);
        if (!isNumber || !std::isfinite(number)) Fail("a number that is none");
        return number;
    }

    bool ReadBoolean(bool value) {
        if (!ReadText().trimmed().isEmpty()) Fail("true or false with a text in it");
        return value;
    }

    QXmlStreamReader mXml;
};

}  // namespace

ArchiveList ReadPropertyMap(const std::string& bytes) {
    if (bytes.size() > kLargestArchive) throw ui::ArchiveError("the archive is larger than a mebibyte");
    return MapReader(bytes).Read();
}

}  // namespace zelui
