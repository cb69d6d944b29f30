#pragma once

// Runs a piece of a test with the rights of an ordinary user, so that file modes
// hold even when the tests run as root, as they do in CI: root reads and writes any
// file whatever its mode says. As an ordinary user the piece runs in this process.
// As root it runs in a child process that has given up root for the user "nobody",
// and what it returns comes back through a pipe; the folders it works in must be
// handed to that user first (Adopt).
#include <QByteArray>
#include <QString>

#include <functional>
#include <sys/types.h>

class OrdinaryUser
{
public:
    // As root: finds the user and makes sure a child can become it.
    OrdinaryUser();

    // False when this machine cannot run anything as an ordinary user (root without
    // the right to change its user, or no such user); Why() says what is missing.
    bool IsAvailable() const { return m_why.isEmpty(); }
    QString Why() const { return m_why; }

    // Gives `path` and everything below it to the user, so that the piece may work
    // there; as an ordinary user already, nothing to do. False, with Why(), when the
    // user could not reach the path anyway.
    bool Adopt(const QString& path);

    // What `work` returned, run as the user. A child that did not finish returns
    // a text beginning "<child " that says why, which no test expects.
    QByteArray Run(const std::function<QByteArray()>& work) const;

private:
    bool m_asChild = false;
    uid_t m_uid = 0;
    gid_t m_gid = 0;
    QString m_why;
};
