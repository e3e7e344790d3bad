#pragma once

#include <QAbstractListModel>

namespace quillbay {

/// A list model whose length QML can bind to.
class CountedListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    using QAbstractListModel::QAbstractListModel;

    int count() const { return rowCount(); }

Q_SIGNALS:
    void countChanged();
};

} // namespace quillbay
