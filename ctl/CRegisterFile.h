/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_CTL_CREGISTERFILE_H
#define HALDEND_CTL_CREGISTERFILE_H

#include "regdb/reg_types.h"

#include <QList>
#include <QMap>
#include <QPair>
#include <QString>
#include <QStringList>

#include <libconfig.h>

/// A register file as the daemon would read it, and the mistakes in it.
class CRegisterFile
{
public:
    /// A mistake, and what the daemon will do with it.
    struct SFinding {
        int iLine; ///< 0: of the file as a whole
        QString cText;
        QString cFile; ///< the file itself, or the one that it includes
    };

    /// One of the four, by the name of the daemon's file.
    struct SChip {
        const char* pszWord; ///< "fpga"; the file is fpga.cnf
        const chip_regs& rsChip;
    };
    static QStringList chipWords();

    /// Reads the file. Its chip is the one that the file is named after, else the one that most of its registers
    /// belong to.
    explicit CRegisterFile(const QString& rcPath);
    ~CRegisterFile();

    CRegisterFile(const CRegisterFile&) = delete;
    CRegisterFile& operator=(const CRegisterFile&) = delete;

    const QString& path() const { return m_cPath; }
    QString chip() const { return QString::fromLatin1(m_psChip->pszWord); }

    /// False if the daemon couldn't read it.
    bool isReadable() const { return m_bReadable; }

    /// In the order of the lines, file by file.
    const QList<SFinding>& findings() const { return m_cFindings; }

    /// The fields that the file sets, as "REGISTER.field" in the spelling of the table, with what they get.
    QMap<QString, std::uint32_t> values() const;

private:
    void parse();
    void checkRegister(config_setting_t* pcGroup);
    void checkField(config_setting_t* pcMember, const reg_bf_group& rsRegister);
    void checkValue(config_setting_t* pcMember, const reg_bf_group& rsRegister, const reg_bf& rsField);
    void checkMissing();
    void checkSaved();
    void find(int iLine, const QString& rcText);
    void find(const config_setting_t* pcSetting, const QString& rcText);
    void findTwice(config_setting_t* pcSetting, const QString& rcName);

    const SChip* m_psChip;
    QString m_cPath;
    config_t m_sConfig;
    bool m_bReadable = false;
    QList<SFinding> m_cFindings;
    QMap<QString, int> m_cNamed; ///< lines of the registers and fields that were named, in small letters
};

#endif
