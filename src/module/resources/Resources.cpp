// The module's resource library. All that the module has to say to people is in its one message, which must
// be there when this library is not; so what lies here is who the module is.

extern "C" {
extern const char ktdxResourceVersion[];
const char ktdxResourceVersion[] = "KtDxNotify " KTDX_VERSION;
}
