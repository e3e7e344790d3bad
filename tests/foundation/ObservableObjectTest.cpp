#include "foundation/ObservableObject.h"

#include <QList>
#include <QStringList>
#include <QVariant>

#include <gmock/gmock.h>

namespace quillbay {

class Counter : public ObservableObject
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    int count() const { return m_count; }
    void setCount(int count) { publish(m_count, count, &Counter::countChanged); }

Q_SIGNALS:
    void countChanged();

private:
    int m_count = 1;
};

TEST(ObservableObject, AnnouncesBeforeTheChangeAndNotifiesAfterIt)
{
    Counter counter;
    QStringList seen;
    QObject::connect(&counter, &ObservableObject::objectWillChange,
                     [&] { seen << QStringLiteral("will %1").arg(counter.count()); });
    QObject::connect(&counter, &Counter::countChanged,
                     [&] { seen << QStringLiteral("did %1").arg(counter.property("count").toInt()); });

    counter.setCount(2);
    counter.setCount(2);

    EXPECT_EQ(seen, QStringList({QStringLiteral("will 1"), QStringLiteral("did 2"), QStringLiteral("will 2"),
                                 QStringLiteral("did 2")}))
        << "an assignment of the same value is announced too";
}

} // namespace quillbay

#include "ObservableObjectTest.moc"
