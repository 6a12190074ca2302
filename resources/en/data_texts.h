// descriptors, scrambling, hashing, regular expressions: the scrambling test
#define T_CRYPT_CAPTION "Scrambling Test"
#define T_CRYPT_KEY "&Key:"
#define T_CRYPT_TEXT "&Text:"
#define T_CRYPT_PLAIN "Text:"
#define T_CRYPT_SCRAMBLED "Scrambled:"
#define T_CRYPT_RESTORED "Unscrambled:"
