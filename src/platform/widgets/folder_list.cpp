#include "platform/widgets/folder_list.h"

#include "base/runtime_error.h"

#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyle>
#include <QStyledItemDelegate>

namespace
{

constexpr int PathRole = Qt::UserRole;
constexpr int DepthRole = Qt::UserRole + 1;
constexpr int StepWidth = 14;

/// Sets each folder in by its depth.
class SetIn : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override
    {
        QStyleOptionViewItem shifted = option;
        shifted.rect.setLeft(option.rect.left() + StepWidth * index.data(DepthRole).toInt());
        QStyledItemDelegate::paint(painter, shifted, index);
    }
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return QStyledItemDelegate::sizeHint(option, index) +
               QSize(StepWidth * index.data(DepthRole).toInt(), 0);
    }
};

/// The folders from `root` to `path`, both included.
QStringList Chain(const QString &root, const QString &path)
{
    QStringList chain{path};
    QString folder = path;
    while (folder != root && !QDir(folder).isRoot()) {
        folder = QFileInfo(folder).absolutePath();
        chain.prepend(folder);
    }
    return chain;
}

} // namespace

FolderList::FolderList(QWidget *parent) : QListWidget(parent)
{
    setItemDelegate(new SetIn(this));
    setUniformItemSizes(false);
    connect(this, &QListWidget::itemClicked, this, &FolderList::ChooseItem);
}

void FolderList::SetPath(const QString &root, const QString &path)
{
    const QString folder = QDir::cleanPath(path);
    const QFileInfo info(folder);
    if (!info.isDir())
        throw RuntimeError(RuntimeError::PathNotFoundNumber,
                           QStringLiteral("Path not found: ") + folder);
    if (!info.isReadable() || !info.isExecutable())
        throw RuntimeError(RuntimeError::PermissionDeniedNumber,
                           QStringLiteral("Permission denied: ") + folder);
    m_root = root;
    m_path = folder;
    clear();
    int depth = 0;
    for (const QString &above : Chain(root, folder)) {
        const QString name = depth == 0 ? above : QFileInfo(above).fileName();
        AddFolder(name, above, depth++, true);
    }
    setCurrentRow(count() - 1);
    const QStringList names =
        QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase);
    for (const QString &name : names)
        AddFolder(name, QDir(folder).filePath(name), depth, false);
    setToolTip(folder);
    scrollToItem(currentItem(), QAbstractItemView::PositionAtCenter);
}

void FolderList::AddFolder(const QString &text, const QString &path, int depth, bool isOpen)
{
    auto *item = new QListWidgetItem(
        style()->standardIcon(isOpen ? QStyle::SP_DirOpenIcon : QStyle::SP_DirClosedIcon), text,
        this);
    item->setData(PathRole, path);
    item->setData(DepthRole, depth);
}

void FolderList::ChooseItem(const QListWidgetItem *item)
{
    if (item && OnChoose)
        OnChoose(item->data(PathRole).toString());
}

void FolderList::mouseDoubleClickEvent(QMouseEvent *event)
{
    // The list has changed under the mouse since the first click, which did it all.
    event->accept();
}

void FolderList::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        event->accept();
        ChooseItem(currentItem());
        return;
    default:
        QListWidget::keyPressEvent(event);
    }
}
