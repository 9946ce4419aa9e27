# SPDX-License-Identifier: GPL-3.0-or-later
# Every host name that the program knows, once. Each is a cache variable with a default (override with -D) and reaches
# the code as one generated header, `hosts.h`, whose shape is hosts.h.in beside this file.
#
# The product's site and the services that do not answer at the program's paths are served by the program
# itself on loopback, from the folder site/. To put that folder on a web server, set KIVANDRA_PRODUCT_DOMAIN,
# KIVANDRA_PRODUCT_SITE and KIVANDRA_FORWARDER_SITE.

# --- The product's own site --------------------------------------------------------------------------------------
set(KIVANDRA_SITE_PORT 14505 CACHE STRING "Loopback port on which the program serves the folder site/")
set(KIVANDRA_PRODUCT_DOMAIN "kivandra.localhost" CACHE STRING
    "Domain of the product's web site; the gate lets every address pass that contains it")
set(KIVANDRA_PRODUCT_SITE "" CACHE STRING "Host and port of the product's web site; empty: the domain at the loopback port")
set(KIVANDRA_FORWARDER_DOMAIN "answers.localhost" CACHE STRING "Domain under which the program serves its forwarders")
set(KIVANDRA_FORWARDER_SITE "" CACHE STRING "Host and port of the forwarders; empty: their domain at the loopback port")
set(KIVANDRA_SUPPORT_ADDRESS "support@kivandra.localhost" CACHE STRING "The maker's mail address, shown in the box of a failed start")

# --- Search services: host, with a port if need be ---------------------------------------------------------------
# A service that answers at the program's path keeps its host. Each other one stands empty: then the host is one of
# the forwarders, whose table (site/forwarders.tsv) leads on to a service that answers today and suits children.
set(KIVANDRA_ENGLISH_QUESTION_HOST "" CACHE STRING
    "English question service, gone; empty: the forwarder to the encyclopedia in plain English")
set(KIVANDRA_SPANISH_QUESTION_HOST "" CACHE STRING
    "Spanish question service, gone; empty: the forwarder to the children's encyclopedia in Spanish")
set(KIVANDRA_WORD_SEARCH_HOST "www.google.com" CACHE STRING "Word search of the address box")
set(KIVANDRA_HOT_KEY_SEARCH_HOST "search.yahoo.com" CACHE STRING "Search of the F12 key")
set(KIVANDRA_SEARCH_HOME_HOST "www.google.com" CACHE STRING "The search page that the gate lets pass without a page scan")
set(KIVANDRA_WEB_SEARCH_HOST "www.google.com" CACHE STRING "Web search, and search inside one site")
set(KIVANDRA_GROUPS_SEARCH_HOST "www.google.com" CACHE STRING "Search of user groups")
set(KIVANDRA_IMAGE_SEARCH_HOST "www.google.com" CACHE STRING "Search for pictures")
set(KIVANDRA_YAHOO_QUOTES_HOST "" CACHE STRING
    "First stock quotes, no longer at that path; empty: the forwarder to the same service's page of a symbol")
set(KIVANDRA_MSN_QUOTES_HOST "" CACHE STRING
    "Second stock quotes, gone; empty: the forwarder to another quote page that takes a symbol in its address")
set(KIVANDRA_DICTIONARY_HOST "" CACHE STRING "Dictionary, gone; empty: the forwarder to the dictionary in plain English")

# --- Sites behind the tools and menus: host, with a port if need be ------------------------------------------------
set(KIVANDRA_MATH_HOST "" CACHE STRING "Mathematics practice; empty: the program's own pages")
set(KIVANDRA_LANGUAGE_HOST "" CACHE STRING "Languages for children; empty: the program's own pages")
set(KIVANDRA_SCIENCE_HOST "" CACHE STRING "Science; empty: the program's own pages")
set(KIVANDRA_SOCIAL_STUDIES_HOST "" CACHE STRING "Social studies; empty: the program's own pages")
set(KIVANDRA_YAHOOLIGANS_HOST "" CACHE STRING
    "Directory for children, gone; empty: the forwarders to a search page for children and, for news, to a children's news page")
set(KIVANDRA_HOMEWORK_HOST "kids.britannica.com" CACHE STRING "Homework help: a children's encyclopedia with help for school")
set(KIVANDRA_BERITS_HOST "www.kidzsearch.com" CACHE STRING
    "Directory of children's sites, gone: a search page and encyclopedia for children; also the site of the month")
set(KIVANDRA_SHREK_HOST "www.dreamworks.com" CACHE STRING "Film site, gone: the site of the film's makers")
set(KIVANDRA_BARNEY_HOST "www.barney.com" CACHE STRING "Barney")
set(KIVANDRA_DISNEY_HOST "www.disney.com" CACHE STRING "Disney")
set(KIVANDRA_SESAME_STREET_HOST "www.sesamestreet.org" CACHE STRING "Sesame Street")
set(KIVANDRA_TELEVISION_WORKSHOP_HOST "www.sesameworkshop.org" CACHE STRING "Children's Television Workshop, by its name of today")
set(KIVANDRA_4KIDS_HOST "www.ducksters.com" CACHE STRING "Pages for children by school subject, in the place of a list that is gone")
set(KIVANDRA_FAMILY_INTERNET_HOST "www.commonsensemedia.org" CACHE STRING
    "Advice on the internet for families, in the place of a site that is gone; one of the gate's trusted sites")
set(KIVANDRA_WORLD_LINGO_HOST "www.worldlingo.com" CACHE STRING "Translation")
set(KIVANDRA_SYSTRAN_HOST "" CACHE STRING
    "Translation, no longer at that path; empty: the forwarder to the same maker's translator of today")

# --- The gate's five trusted substrings --------------------------------------------------------------------------
# Pieces of host names that the gate looks for anywhere in an address; the third is KIVANDRA_PRODUCT_DOMAIN.
set(KIVANDRA_TRUSTED_SITE_1 "pbskids.org" CACHE STRING "Children's site; also tried on the frame's address box")
set(KIVANDRA_TRUSTED_SITE_2 "kids.nationalgeographic.com" CACHE STRING "Children's site")
set(KIVANDRA_TRUSTED_SITE_4 "starfall.com" CACHE STRING "Children's site")
set(KIVANDRA_TRUSTED_SITE_5 "commonsensemedia.org" CACHE STRING "Family-internet site")

# --- Rows of the word table that are hosts or addresses ----------------------------------------------------------
# None may be empty: an empty row ends every walk through the table. They refuse sites that the table's words miss.
# Bare domains; rows 48 and 54 are two domains written one after the other.
set(KIVANDRA_BAD_WORDS_ROW_44 "playboy.com" CACHE STRING "Refused host")
set(KIVANDRA_BAD_WORDS_ROW_48 "penthouse.comhustler.com" CACHE STRING "Refused hosts, joined")
set(KIVANDRA_BAD_WORDS_ROW_51 "xvideos.com" CACHE STRING "Refused host")
set(KIVANDRA_BAD_WORDS_ROW_52 "xhamster.com" CACHE STRING "Refused host")
set(KIVANDRA_BAD_WORDS_ROW_53 "xnxx.com" CACHE STRING "Refused host")
set(KIVANDRA_BAD_WORDS_ROW_54 "redtube.combrazzers.com" CACHE STRING "Refused hosts, joined")
set(KIVANDRA_BAD_WORDS_ROW_75 "chaturbate.com" CACHE STRING "Refused host")
set(KIVANDRA_BAD_WORDS_ROW_76 "onlyfans.com" CACHE STRING "Refused host")
set(KIVANDRA_BAD_WORDS_ROW_77 "stripchat.com" CACHE STRING "Refused host")
# Addresses with their scheme.
set(KIVANDRA_BAD_WORDS_ROW_83 "https://www.google.com/search?q=fuck" CACHE STRING "Refused search for a swear word")
set(KIVANDRA_BAD_WORDS_ROW_84 "https://spankbang.com" CACHE STRING "Refused home page")
set(KIVANDRA_BAD_WORDS_ROW_85 "https://www.livejasmin.com" CACHE STRING "Refused home page")
set(KIVANDRA_BAD_WORDS_ROW_86 "https://www.reddit.com/chat" CACHE STRING "Refused chat section of a portal")
set(KIVANDRA_BAD_WORDS_ROW_87 "https://go.mail.ru/redir" CACHE STRING "Refused redirect path of a portal")

# --- The header --------------------------------------------------------------------------------------------------
# A variable left empty above stands for another; the answer is an ordinary variable, so that it follows that other.
function(kivandra_host_or name fallback result)
  if(${name} STREQUAL "")
    set(${result} "${fallback}" PARENT_SCOPE)
  else()
    set(${result} "${${name}}" PARENT_SCOPE)
  endif()
endfunction()

kivandra_host_or(KIVANDRA_PRODUCT_SITE "${KIVANDRA_PRODUCT_DOMAIN}:${KIVANDRA_SITE_PORT}" productSite)
kivandra_host_or(KIVANDRA_FORWARDER_SITE "${KIVANDRA_FORWARDER_DOMAIN}:${KIVANDRA_SITE_PORT}" forwarderSite)
# Two services have the same path and one has a root: their names tell them apart.
kivandra_host_or(KIVANDRA_ENGLISH_QUESTION_HOST "english.${forwarderSite}" englishQuestionHost)
kivandra_host_or(KIVANDRA_SPANISH_QUESTION_HOST "spanish.${forwarderSite}" spanishQuestionHost)
kivandra_host_or(KIVANDRA_YAHOOLIGANS_HOST "children.${forwarderSite}" yahooligansHost)
kivandra_host_or(KIVANDRA_SYSTRAN_HOST "${forwarderSite}" systranHost)
kivandra_host_or(KIVANDRA_YAHOO_QUOTES_HOST "${forwarderSite}" yahooQuotesHost)
kivandra_host_or(KIVANDRA_MSN_QUOTES_HOST "${forwarderSite}" msnQuotesHost)
kivandra_host_or(KIVANDRA_DICTIONARY_HOST "${forwarderSite}" dictionaryHost)
kivandra_host_or(KIVANDRA_MATH_HOST "math.${productSite}" mathHost)
kivandra_host_or(KIVANDRA_LANGUAGE_HOST "language.${productSite}" languageHost)
kivandra_host_or(KIVANDRA_SCIENCE_HOST "science.${productSite}" scienceHost)
kivandra_host_or(KIVANDRA_SOCIAL_STUDIES_HOST "social.${productSite}" socialStudiesHost)

foreach(row 44 48 51 52 53 54 75 76 77 83 84 85 86 87)
  if(KIVANDRA_BAD_WORDS_ROW_${row} STREQUAL "")
    message(FATAL_ERROR "KIVANDRA_BAD_WORDS_ROW_${row} is empty; an empty row would end every walk through the word table")
  endif()
endforeach()
foreach(name TRUSTED_SITE_1 TRUSTED_SITE_2 PRODUCT_DOMAIN TRUSTED_SITE_4 TRUSTED_SITE_5)
  if(KIVANDRA_${name} STREQUAL "")
    message(FATAL_ERROR "KIVANDRA_${name} is empty; every address contains the empty text, so all would pass the gate")
  endif()
endforeach()

configure_file(${CMAKE_CURRENT_LIST_DIR}/hosts.h.in ${CMAKE_BINARY_DIR}/generated/hosts.h @ONLY)
