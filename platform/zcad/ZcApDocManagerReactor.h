#pragma once

// Notifications of the document manager. Every one does nothing unless overridden.
class ZcApDocument;

class ZcApDocManagerReactor
{
public:
    virtual ~ZcApDocManagerReactor() = default;

    virtual void documentCreated(ZcApDocument*) { }
    virtual void documentToBeDestroyed(ZcApDocument*) { }
    virtual void documentDestroyed(const char16_t* /*fileName*/) { }
    virtual void documentBecameCurrent(ZcApDocument*) { }
    virtual void documentToBeActivated(ZcApDocument*) { }
    virtual void documentActivated(ZcApDocument*) { }
    virtual void documentToBeDeactivated(ZcApDocument*) { }
};
