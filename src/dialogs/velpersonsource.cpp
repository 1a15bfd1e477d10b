// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velpersonsource.h"

#include "dialogs/velpersonmodel.h"
#include "dialogs/velsearchline.h"

#include <KLocalizedString>

#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSet>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace
{
/** Nothing that is shown is other. */
bool isSameList(const VelAccountList &one, const VelAccountList &other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](const VelAccount &a, const VelAccount &b) { return a == b && a.type == b.type; });
}
} // namespace

VelPersonSource::VelPersonSource(const VelAddressBook &book, QWidget *parent)
    : QWidget(parent)
    , m_book(book)
    , m_model(new VelPersonModel(this))
    , m_sourceInput(new QComboBox(this))
    , m_view(new QTreeView(this))
    , m_searchInput(new VelSearchLine(m_view, this))
{
    makeControls();
    makeLayout();
    connect(m_sourceInput, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &VelPersonSource::slotSourceType);
    connect(m_searchInput, &QLineEdit::textChanged, this, &VelPersonSource::search);
    connect(m_view, &QTreeView::doubleClicked, this, &VelPersonSource::chosen);
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &VelPersonSource::selectionChanged);
    connect(&m_book, &VelAddressBook::changed, this, &VelPersonSource::refreshAddressBook);
    // A new start of the model drops the selection without a word.
    connect(m_model, &VelPersonModel::modelReset, this, &VelPersonSource::selectionChanged);
}

void VelPersonSource::makeControls()
{
    m_sourceInput->addItems({i18n("Delmast Time"), i18n("KDE Addressbook")});
    m_sourceInput->setAccessibleName(i18n("Where people come from"));
    m_sourceInput->setToolTip(i18n("The users and resources of the server, or your own address book."));

    m_searchInput->setToolTip(i18n("Parts of the name or the e-mail address. Return adds who is selected."));
    m_searchInput->installEventFilter(this);

    m_view->setObjectName(QStringLiteral("people"));
    m_view->setModel(m_model);
    m_view->setRootIsDecorated(false);
    m_view->setUniformRowHeights(true);
    m_view->setAllColumnsShowFocus(true);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setDragDropMode(QAbstractItemView::DragOnly);
    m_view->header()->setSectionResizeMode(QHeaderView::Stretch);
    m_view->setSortingEnabled(true);
    m_view->sortByColumn(VelPersonModel::NameColumn, Qt::AscendingOrder);
    m_view->setAccessibleName(i18n("People and resources"));
    m_view->setWhatsThis(
        i18n("Select somebody here and take them over with an arrow button, a double click or "
             "by dragging them to a list."));
    m_view->installEventFilter(this);
}

void VelPersonSource::makeLayout()
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_sourceInput);
    layout->addWidget(m_searchInput);
    layout->addWidget(m_view, 1);
    setFocusProxy(m_searchInput);
}

void VelPersonSource::setServerAccounts(const VelAccountList &accounts)
{
    if (isSameList(accounts, m_serverAccounts))
        return;
    m_serverAccounts = accounts;
    if (m_sourceInput->currentIndex() == ServerSource)
        refill(m_serverAccounts);
}

void VelPersonSource::slotSourceType(int source)
{
    if (source == ServerSource)
        m_model->setAccounts(m_serverAccounts);
    else
        m_model->setAccounts(source == AddressBookSource ? addressBookAccounts() : VelAccountList());
    selectFirst();
}

void VelPersonSource::refreshAddressBook()
{
    m_bookAccounts.reset();
    if (m_sourceInput->currentIndex() == AddressBookSource)
        refill(addressBookAccounts());
}

void VelPersonSource::refill(const VelAccountList &accounts)
{
    const VelAccountList selected = selectedAccounts();
    m_model->setAccounts(accounts);
    select(selected);
    if (!hasSelection())
        selectFirst();
}

bool VelPersonSource::hasSelection() const
{
    return m_view->selectionModel()->hasSelection();
}

VelAccountList VelPersonSource::selectedAccounts() const
{
    VelAccountList selected;
    const QModelIndexList rows = m_view->selectionModel()->selectedRows();
    for (const QModelIndex &row : rows)
        selected.append(m_model->account(row.row()));
    return selected;
}

const VelAccountList &VelPersonSource::addressBookAccounts()
{
    if (m_bookAccounts)
        return *m_bookAccounts;
    VelAccountList accounts;
    const QVector<VelAddressee> addressees = m_book.addressees();
    for (const VelAddressee &addressee : addressees) {
        // Lists and invitations show names; who has none is known by the address.
        const QString &name = addressee.name.isEmpty() ? addressee.email : addressee.name;
        accounts.append(VelAccount(name, addressee.email, 0));
        accounts.last().type = VelAccount::Person;
    }
    return m_bookAccounts.emplace(accounts);
}

void VelPersonSource::search(const QString &text)
{
    m_model->setFilter(text);
    selectFirst();
}

/** While a search is on, Return shall take the best match without another key. */
void VelPersonSource::selectFirst()
{
    if (!m_searchInput->text().trimmed().isEmpty())
        m_view->setCurrentIndex(m_model->index(0, 0));
}

/** Those of @p accounts who are still in the list. */
void VelPersonSource::select(const VelAccountList &accounts)
{
    QSet<QString> wanted;
    for (const VelAccount &account : accounts)
        wanted.insert(VelPersonDrag::toText(account));
    QItemSelection rows;
    for (int row = 0; row < m_model->rowCount() && !wanted.isEmpty(); ++row) {
        const QModelIndex index = m_model->index(row, 0);
        if (wanted.contains(VelPersonDrag::toText(m_model->account(row))))
            rows.select(index, index);
    }
    if (rows.isEmpty())
        return;
    m_view->selectionModel()->select(rows, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    // The arrow keys go on from there.
    m_view->selectionModel()->setCurrentIndex(rows.first().topLeft(), QItemSelectionModel::NoUpdate);
}

bool VelPersonSource::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        if (hasSelection()) {
            Q_EMIT chosen();
            return true;
        }
        // A search that finds nobody must not close the dialog as if all were said.
        return !m_searchInput->text().isEmpty();
    }
    return QWidget::eventFilter(watched, event);
}
