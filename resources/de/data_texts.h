// descriptors, scrambling, hashing, regular expressions: the scrambling test
#define T_CRYPT_CAPTION "Verschleierungstest"
#define T_CRYPT_KEY "&Schlüssel:"
#define T_CRYPT_TEXT "&Text:"
#define T_CRYPT_PLAIN "Text:"
#define T_CRYPT_SCRAMBLED "Verschleiert:"
#define T_CRYPT_RESTORED "Entschleiert:"
