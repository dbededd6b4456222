// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSaveFile>
#include <QString>

#include <memory>
#include <vector>

namespace Workbench {

/// Files of one operation, of which all are written or none. Nothing appears under its name before commit(); what was
/// not committed vanishes. Errors are std::runtime_error with the file's name.
class OutputFiles {
public:
    OutputFiles();
    ~OutputFiles();

    QIODevice &open(const QString &fileName);
    void commit();

private:
    std::vector<std::unique_ptr<QSaveFile>> m_files;
};

} // namespace Workbench
