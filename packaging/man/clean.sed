# What Asciidoctor writes for groff alone, and empty lines where none belong.
/^\.if \\n\[\.g\] \\{\\$/,/^\.\\}$/d
/^\.S[HS] /{n;/^\.sp$/d}
/^T}:T{$/{n;/^\.sp$/d}
/^T{$/{n;/^\.sp$/d}
