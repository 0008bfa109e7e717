#include "workflows/dlgfreestreditor.h"
#include "ui_dlgfreestreditor.h"

dlgFreeStrEditor::dlgFreeStrEditor()
    : ui(new Ui_dlgFreeStrEditor)
{
    ui->setupUi(this);
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
}

dlgFreeStrEditor::~dlgFreeStrEditor()
{
    delete ui;
}

void dlgFreeStrEditor::SetData(const QStringList& lines)
{
    for (const auto& line : lines) {
        auto* const item = new QListWidgetItem(line, ui->listWidget);
        item->setFlags(item->flags() | Qt::ItemIsEditable);
    }
}

QStringList dlgFreeStrEditor::ReadData() const
{
    QStringList lines;
    for (int row = 0; row < ui->listWidget->count(); ++row)
        lines.append(ui->listWidget->item(row)->text());
    return lines;
}
