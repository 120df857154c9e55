// dismissing_polkit_agent PID REGISTERED_FILE: a polkit authentication agent for process PID that
// dismisses every request it gets, as a person does who closes the password dialog. Creates
// REGISTERED_FILE once polkit has taken it as that process's agent; then runs until it is killed.
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QFile>
#include <cstdio>
#include <cstdlib>

namespace {

const QString kObjectPath = "/org/kelvo/DismissingAgent";
const QString kAuthority = "org.freedesktop.PolicyKit1";

class DismissingAgent final : public QDBusVirtualObject {
public:
    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() != "BeginAuthentication") return false;
        // The error an agent answers with when its user cancelled; polkit then reports dismissal.
        connection.send(message.createErrorReply(kAuthority + ".Error.Cancelled", "Dismissed by the test."));
        return true;
    }
};

// polkit's subject for a process: its kind, and its identifier (start time 0: polkit looks it up).
QDBusArgument processSubject(quint32 pid) {
    QDBusArgument subject;
    subject.beginStructure();
    subject << QString("unix-process") << QVariantMap{{"pid", pid}, {"start-time", quint64(0)}};
    subject.endStructure();
    return subject;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: dismissing_polkit_agent PID REGISTERED_FILE\n");
        return 2;
    }
    QCoreApplication application(argc, argv);
    QDBusConnection bus = QDBusConnection::systemBus();
    DismissingAgent agent;
    if (!bus.registerVirtualObject(kObjectPath, &agent)) return 1;
    QDBusMessage registration = QDBusMessage::createMethodCall(
        kAuthority, "/org/freedesktop/PolicyKit1/Authority", kAuthority + ".Authority", "RegisterAuthenticationAgent");
    registration << QVariant::fromValue(processSubject(std::strtoul(argv[1], nullptr, 10))) << QString("C") << kObjectPath;
    QDBusMessage reply = bus.call(registration);
    if (reply.type() != QDBusMessage::ReplyMessage) {
        std::fprintf(stderr, "polkit refused the agent: %s\n", qPrintable(reply.errorMessage()));
        return 1;
    }
    QFile(argv[2]).open(QIODevice::WriteOnly);
    return application.exec();
}
