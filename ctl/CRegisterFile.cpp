/* SPDX-License-Identifier: MIT */
#include "ctl/CRegisterFile.h"

#include "ctl/Suggestion.h"
#include "regdb/chip_regs.h"
#include "regdb/config_guard.h"
#include "regdb/registers.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <tuple>
#include <vector>

namespace
{

const CRegisterFile::SChip CHIPS[] = {
    {"fpga",    crp_fpga   },
    {"lime",    crp_lime   },
    {"saa7113", crp_saa7113},
    {"saa7129", crp_saa7129},
};

const char* const REPAIR = "docs/register-files.md has the repair";

QString contentsOf(const QString& rcPath)
{
    QFile cFile(rcPath);
    return cFile.open(QIODevice::ReadOnly) ? QString::fromUtf8(cFile.readAll()) : QString();
}

/// How many of the names that begin a group are registers of the chip.
int registersOf(const chip_regs& rsChip, const QString& rcText)
{
    static const QRegularExpression cGroup(QStringLiteral("^\\s*([A-Za-z_]\\w*)\\s*[:=]"),
                                           QRegularExpression::MultilineOption);
    int iCount = 0;
    QRegularExpressionMatchIterator cMatches = cGroup.globalMatch(rcText);
    while (cMatches.hasNext())
        if (search_reg_bf_group_by_name(&rsChip, cMatches.next().captured(1).toLatin1().constData()) !=
            nullptr)
            ++iCount;
    return iCount;
}

const CRegisterFile::SChip* chipOf(const QString& rcPath)
{
    const QString cName = QFileInfo(rcPath).baseName();
    for (const CRegisterFile::SChip& rsChip : CHIPS)
        if (cName == QLatin1String(rsChip.pszWord))
            return &rsChip;
    const QString cText = QFileInfo(rcPath).isFile() ? contentsOf(rcPath) : QString();
    return std::max_element(std::begin(CHIPS), std::end(CHIPS),
                            [&](const CRegisterFile::SChip& rsFirst, const CRegisterFile::SChip& rsSecond) {
                                return registersOf(rsFirst.rsChip, cText) <
                                       registersOf(rsSecond.rsChip, cText);
                            });
}

/// Whether every register of the chip is sent at a start, named or not: those of decoder and encoder are.
bool isSentWhole(const chip_regs& rsChip)
{
    return rsChip.regs[0].size == 8;
}

QStringList registerNames(const chip_regs& rsChip)
{
    QStringList cNames;
    for (const reg_bf_group* psRegister = rsChip.regs; psRegister->name != nullptr; ++psRegister)
        cNames << QString::fromLatin1(psRegister->name);
    return cNames;
}

QStringList fieldNames(const reg_bf_group& rsRegister)
{
    QStringList cNames;
    for (const reg_bf* psField = rsRegister.bf; psField->name != nullptr; ++psField)
        cNames << QString::fromLatin1(psField->name);
    return cNames;
}

QString nameOf(const config_setting_t* pcSetting)
{
    const char* pszName = config_setting_name(pcSetting);
    return pszName != nullptr ? QString::fromLatin1(pszName) : QString();
}

int lineOf(const config_setting_t* pcSetting)
{
    return static_cast<int>(config_setting_source_line(pcSetting));
}

const char* typeOf(const config_setting_t* pcSetting)
{
    switch (config_setting_type(pcSetting)) {
    case CONFIG_TYPE_STRING:
        return "a text";
    case CONFIG_TYPE_FLOAT:
        return "a fraction";
    case CONFIG_TYPE_BOOL:
        return "a truth value";
    default:
        return "a group or list";
    }
}

/// A register with fields of its own, in which a value can be tried.
class CTrial
{
public:
    explicit CTrial(const reg_bf_group& rsRegister) : m_sRegister(rsRegister)
    {
        for (const reg_bf* psField = rsRegister.bf; psField->name != nullptr; ++psField)
            m_cFields.push_back({psField->name, 0, psField->len, psField->help});
        m_cFields.push_back({nullptr, 0, 0, ""});
        m_sRegister.bf = m_cFields.data();
    }

    /// Gives a field a value, and tells what the fields are then: "tsy 88, res1 1".
    QString after(const char* pszField, std::uint32_t u32Value)
    {
        set_bitfield(&m_sRegister, search_reg_bf_by_name(&m_sRegister, pszField), u32Value);
        QStringList cChanged;
        for (const reg_bf* psField = m_sRegister.bf; psField->name != nullptr; ++psField)
            if (psField->value != 0)
                cChanged << QStringLiteral("%1 %2").arg(QLatin1String(psField->name)).arg(psField->value);
        return cChanged.isEmpty() ? QStringLiteral("all fields 0") : cChanged.join(QStringLiteral(", "));
    }

private:
    reg_bf_group m_sRegister;
    std::vector<reg_bf> m_cFields;
};

} // namespace

QStringList CRegisterFile::chipWords()
{
    QStringList cWords;
    for (const SChip& rsChip : CHIPS)
        cWords << QString::fromLatin1(rsChip.pszWord);
    return cWords;
}

CRegisterFile::CRegisterFile(const QString& rcPath) : m_psChip(chipOf(rcPath)), m_cPath(rcPath)
{
    config_init(&m_sConfig);
    parse();
    if (m_bReadable) {
        config_setting_t* pcRoot = config_root_setting(&m_sConfig);
        for (int i = 0; i < config_setting_length(pcRoot); ++i)
            checkRegister(config_setting_get_elem(pcRoot, static_cast<unsigned>(i)));
        checkMissing();
    }
    checkSaved();
    std::stable_sort(
        m_cFindings.begin(), m_cFindings.end(), [](const SFinding& rsFirst, const SFinding& rsSecond) {
            return std::tie(rsFirst.cFile, rsFirst.iLine) < std::tie(rsSecond.cFile, rsSecond.iLine);
        });
}

CRegisterFile::~CRegisterFile()
{
    config_destroy(&m_sConfig);
}

void CRegisterFile::find(int iLine, const QString& rcText)
{
    m_cFindings.append({iLine, rcText, m_cPath});
}

void CRegisterFile::find(const config_setting_t* pcSetting, const QString& rcText)
{
    const char* pszFile = config_setting_source_file(pcSetting);
    m_cFindings.append(
        {lineOf(pcSetting), rcText, pszFile != nullptr ? QFile::decodeName(pszFile) : m_cPath});
}

void CRegisterFile::parse()
{
    const QByteArray cPath = QFile::encodeName(m_cPath);
    const QString cThen =
        QStringLiteral("haldend doesn't start with it, and a reload leaves the chip as it is");
    int iLongLine = 0;
    if (!QFileInfo::exists(m_cPath)) {
        find(0, QStringLiteral("isn't there: ") + cThen);
    } else if (config_file_fault(cPath.constData(), &iLongLine) != nullptr) {
        find(iLongLine,
             (iLongLine != 0
                  ? QStringLiteral("has more than 128 KiB: ")
                  : QStringLiteral("it or what it includes is no regular file, or can't be read: ")) +
                 cThen);
    } else if (config_read_file(&m_sConfig, cPath.constData()) != CONFIG_TRUE) {
        find(config_error_line(&m_sConfig),
             QStringLiteral("%1: %2").arg(QLatin1String(config_error_text(&m_sConfig)), cThen));
    } else {
        m_bReadable = true;
    }
}

/// The library refuses a name that comes twice in the same spelling; the tables know no capitals.
void CRegisterFile::findTwice(config_setting_t* pcSetting, const QString& rcName)
{
    const QString cName = rcName.toLower();
    if (m_cNamed.contains(cName))
        find(pcSetting, QStringLiteral("%1 was set in line %2 already: this line wins where they differ")
                            .arg(rcName)
                            .arg(m_cNamed.value(cName)));
    m_cNamed.insert(cName, lineOf(pcSetting));
}

void CRegisterFile::checkRegister(config_setting_t* pcGroup)
{
    const QString cName = nameOf(pcGroup);
    if (config_setting_is_group(pcGroup) == CONFIG_FALSE) {
        find(pcGroup, QStringLiteral("%1 stands outside of a register: it does nothing").arg(cName));
        return;
    }
    const reg_bf_group* psRegister =
        search_reg_bf_group_by_name(&m_psChip->rsChip, cName.toLatin1().constData());
    if (psRegister == nullptr) {
        find(pcGroup, QStringLiteral("%1 has no register %2%3: the group does nothing")
                          .arg(chip(), cName, suggestion(cName, registerNames(m_psChip->rsChip))));
        return;
    }
    findTwice(pcGroup, QString::fromLatin1(psRegister->name));
    if (config_setting_length(pcGroup) == 0)
        find(pcGroup, QStringLiteral("%1 has no fields: the register counts as not named").arg(cName));
    if (isSentWhole(m_psChip->rsChip) && psRegister->valid == 0)
        find(pcGroup,
             QStringLiteral("%1 can only be read: haldend will write it, which it else doesn't").arg(cName));
    for (int i = 0; i < config_setting_length(pcGroup); ++i)
        checkField(config_setting_get_elem(pcGroup, static_cast<unsigned>(i)), *psRegister);
}

void CRegisterFile::checkField(config_setting_t* pcMember, const reg_bf_group& rsRegister)
{
    const QString cName = nameOf(pcMember);
    const QString cRegister = QString::fromLatin1(rsRegister.name);
    for (const reg_bf* psField = rsRegister.bf; psField->name != nullptr; ++psField) {
        if (cName.compare(QLatin1String(psField->name), Qt::CaseInsensitive) != 0)
            continue;
        findTwice(pcMember, cRegister + QLatin1Char('.') + QLatin1String(psField->name));
        checkValue(pcMember, rsRegister, *psField);
        return;
    }
    find(pcMember, QStringLiteral("%1 has no field %2%3: the line does nothing")
                       .arg(cRegister, cName, suggestion(cName, fieldNames(rsRegister))));
}

void CRegisterFile::checkValue(config_setting_t* pcMember, const reg_bf_group& rsRegister,
                               const reg_bf& rsField)
{
    const int iType = config_setting_type(pcMember);
    const QString cName = QString::fromLatin1(rsField.name);
    if (iType != CONFIG_TYPE_INT && iType != CONFIG_TYPE_INT64) {
        find(pcMember, QStringLiteral("%1 is given %2 where a whole number belongs: it becomes 0")
                           .arg(cName, QLatin1String(typeOf(pcMember))));
        return;
    }
    const long long llValue = config_setting_get_int64(pcMember);
    const long long llMaximum = (1LL << rsField.len) - 1;
    if (llValue >= 0 && llValue <= llMaximum)
        return;
    if (iType == CONFIG_TYPE_INT64) {
        find(pcMember, QStringLiteral("%1 = %2 doesn't fit into 32 bits: what it becomes differs between "
                                      "processors")
                           .arg(cName)
                           .arg(llValue));
        return;
    }
    find(pcMember, QStringLiteral("%1 = %2 doesn't fit into its %3 bits (0 to %4): by itself it makes %5")
                       .arg(cName)
                       .arg(llValue)
                       .arg(rsField.len)
                       .arg(llMaximum)
                       .arg(CTrial(rsRegister).after(rsField.name, static_cast<std::uint32_t>(llValue))));
}

void CRegisterFile::checkMissing()
{
    if (!isSentWhole(m_psChip->rsChip))
        return;
    QStringList cMissing;
    for (const reg_bf_group* psRegister = m_psChip->rsChip.regs; psRegister->name != nullptr; ++psRegister)
        if (psRegister->valid != 0 && !m_cNamed.contains(QString::fromLatin1(psRegister->name).toLower()))
            cMissing << QString::fromLatin1(psRegister->name);
    if (!cMissing.isEmpty())
        find(0, QStringLiteral("doesn't name %1: written as 0 at a start")
                    .arg(cMissing.join(QStringLiteral(", "))));
}

/// A file that save_hardware_config wrote looks right, but doesn't come back whole.
void CRegisterFile::checkSaved()
{
    const QString cText = QFileInfo(m_cPath).isFile() ? contentsOf(m_cPath) : QString();
    static const QRegularExpression cReserved(QStringLiteral("^ *res##id "),
                                              QRegularExpression::MultilineOption);
    static const QRegularExpression cLost(
        QStringLiteral("Val:\\(0x(?!00\\))..\\)\\n\\{\\n(?: *\\w+ = 0   ;.*\\n)+\\}"));
    const QRegularExpressionMatch cFirst = cReserved.match(cText);
    if (cFirst.hasMatch())
        find(cText.leftRef(cFirst.capturedStart()).count(QLatin1Char('\n')) + 1,
             QStringLiteral("a saved file: res##id can't be read back, take these lines out; %1")
                 .arg(QLatin1String(REPAIR)));
    const QRegularExpressionMatch cValue = cLost.match(cText);
    if (cValue.hasMatch())
        find(cText.leftRef(cValue.capturedStart()).count(QLatin1Char('\n')) + 1,
             QStringLiteral("a saved file: the values stand only in comments, and all fields become 0; %1")
                 .arg(QLatin1String(REPAIR)));
}

QMap<QString, std::uint32_t> CRegisterFile::values() const
{
    QMap<QString, std::uint32_t> cValues;
    const config_setting_t* pcRoot = m_bReadable ? config_root_setting(&m_sConfig) : nullptr;
    for (int i = 0; pcRoot != nullptr && i < config_setting_length(pcRoot); ++i) {
        const config_setting_t* pcGroup = config_setting_get_elem(pcRoot, static_cast<unsigned>(i));
        reg_bf_group* psRegister =
            config_setting_is_group(pcGroup) != CONFIG_FALSE
                ? search_reg_bf_group_by_name(&m_psChip->rsChip, nameOf(pcGroup).toLatin1().constData())
                : nullptr;
        for (int iMember = 0; psRegister != nullptr && iMember < config_setting_length(pcGroup); ++iMember) {
            const config_setting_t* pcMember =
                config_setting_get_elem(pcGroup, static_cast<unsigned>(iMember));
            const reg_bf* psField = search_reg_bf_by_name(psRegister, config_setting_name(pcMember));
            if (psField != nullptr)
                cValues.insert(QString::fromLatin1(psRegister->name) + QLatin1Char('.') +
                                   QLatin1String(psField->name),
                               static_cast<std::uint32_t>(config_setting_get_int(pcMember)));
        }
    }
    return cValues;
}
