// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "publish/NewProduct.h"

#include "catalog/CCatalog.h"
#include "catalog/ElementChecks.h"
#include "catalog/FileKinds.h"
#include "platform/xml/XmlFile.h"
#include "products/CVersionString.h"
#include "products/DescriptionFormat.h"
#include "products/ListFormat.h"
#include "products/Products.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>
#include <ostream>

namespace {

constexpr const char* LIST = R"(<?xml version="1.0" encoding="UTF-8"?>
<Products Version="1.0.0.0" Url="%1products.xml">
%2</Products>
)";
constexpr const char* ELEMENT = R"(    <Product Name="%1" BaseXml="%2" DefaultUrl="%3pages/%2.html"/>
)";
constexpr const char* LOCAL = R"(<?xml version="1.0" encoding="UTF-8"?>
<SoftwareUpdate Location="Client">
    <Product CurrentVersion="%1" RemoteVersionFile="%2.xml" RemoteVersionFileURL="%3updates"/>
</SoftwareUpdate>
)";
constexpr const char* REMOTE = R"(<?xml version="1.0" encoding="UTF-8"?>
<SoftwareUpdate Location="Server">
    <Product UpdateVersion="%1"/>
</SoftwareUpdate>
)";

struct NewFile {
    QString path;
    QString text;
};

// Leaves no file when it fails.
bool Write(const NewFile& file) {
    QFile output(file.path);
    const QByteArray bytes = file.text.toUtf8();
    if (!QDir().mkpath(QFileInfo(file.path).path()) ||
        !output.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return false;
    if (output.write(bytes) == bytes.size() && output.flush())
        return true;
    output.remove();
    return false;
}

// Where installers' files lie already, or should lie.
QString ShareOf(const CCatalog& catalog) {
    const auto locals = catalog.FilesOf(FileKind::LOCAL_DESCRIPTION);
    return locals.empty() ? catalog.GetFolder() + QString("/share") : locals.front()->GetFolder();
}

// The base name of a product that shares local descriptions with another; empty without such a product.
QString OtherProductOf(const std::vector<const CCatalogFile*>& lists, const QString& key) {
    for (const CCatalogFile* list : lists)
        for (const TiXmlElement* element : Children(list->GetRoot(), ListFormat::PRODUCT))
            if (QString base = AttributeText(*element, ListFormat::BASE_XML);
                base != key && (IsDescriptionOf(base, key + ".xml") || IsDescriptionOf(key, base + ".xml")))
                return base;
    return {};
}

}  // namespace

NewProduct TakeNewProduct(QStringList& arguments) {
    if (arguments.size() < 3)
        return {.problem = "there must be a name, a key, a version and a folder"};
    NewProduct product{.name = arguments.takeFirst().trimmed(),
                       .key = arguments.takeFirst(),
                       .version = arguments.takeFirst()};
    static const QRegularExpression key("^[A-Za-z][A-Za-z0-9_-]*$");
    const CVersionString version{CAtlString(product.version)};
    if (product.name.isEmpty())
        return {.problem = "the name is empty"};
    if (!key.match(product.key).hasMatch())
        return {.problem = "the key takes letters, digits, \"_\" and \"-\""};
    const QString file = product.key + ".xml";
    if (KindByName(file) != FileKind::UNKNOWN || file == QString::fromWCharArray(DescriptionFormat::OWN_FILE))
        return {.problem = QString("\"%1\" is a file of the program itself").arg(file)};
    if (!version.IsValid() || version.GetString().ToQString() != product.version)
        return {.problem = "the version takes four numbers with dots"};
    return product;
}

QString WriteNewProduct(const NewProduct& product, const FolderArguments& arguments, std::ostream& out) {
    const CCatalog catalog = arguments.Read();
    if (!catalog.GetSite())
        return QString("nothing in \"%1\" tells where it is published: --site does").arg(arguments.folder);
    const QString address = catalog.GetSite()->GetAddress().toHtmlEscaped();
    const QString element =
        QString::fromLatin1(ELEMENT).arg(product.name.toHtmlEscaped(), product.key, address);
    const QString share = ShareOf(catalog);
    const QString site = catalog.GetSite()->GetFolder();
    std::vector<NewFile> files{{QString("%1/%2.xml").arg(share, product.key),
                                QString::fromLatin1(LOCAL).arg(product.version, product.key, address)},
                               {QString("%1/updates/%2.xml").arg(site, product.key),
                                QString::fromLatin1(REMOTE).arg(product.version)}};
    const auto lists = catalog.FilesOf(FileKind::PRODUCT_LIST);
    if (const QString other = OtherProductOf(lists, product.key); !other.isEmpty())
        return QString("installations would take versions of \"%1\" and of \"%2\" for each other's")
            .arg(product.key, other);
    if (lists.empty())
        for (const QString& folder : {site, share})
            files.push_back({folder + u'/' + Products::FILE_NAME.ToQString(),
                             QString::fromLatin1(LIST).arg(address, element)});
    for (const NewFile& file : files)
        if (QFileInfo::exists(file.path))
            return QString("\"%1\" is there already").arg(file.path);
    for (auto file = files.begin(); file != files.end(); ++file)
        if (!Write(*file)) {
            std::for_each(files.begin(), file, [](const NewFile& written) { QFile::remove(written.path); });
            return QString("\"%1\" cannot be written").arg(file->path);
        }
    for (const NewFile& file : files)
        out << file.path.toStdString() << '\n';
    if (!lists.empty())
        out << "Put this into the product list, and raise its Version:\n" << element.toStdString();
    return {};
}
