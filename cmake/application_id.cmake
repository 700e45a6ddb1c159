# The name by which a desktop knows the program, from the product's host: www.quorvel.example gives
# example.quorvel.Quorvel. The desktop file, the metainfo, the icons and the windows bear this name.
string(REGEX REPLACE "^www[.]" "" domain "${QUORVEL_PRODUCT_HOST}")
string(REPLACE "." ";" domain "${domain}")
list(REVERSE domain)
list(JOIN domain "." QUORVEL_DOMAIN)
set(QUORVEL_APPLICATION_ID ${QUORVEL_DOMAIN}.Quorvel)
