# Promise: the page of an audit works in a browser: nothing is loaded, rows are sorted and filtered, and an
# example is one click away.

file(MAKE_DIRECTORY ${FOLDER})
file(WRITE ${FOLDER}/pages.ndjson
    "{\"title\":\"a\",\"seasonNumber\":1,\"odd\":1}\n"
    "{\"title\":\"b\",\"seasonNumber\":[],\"odd\":1,\"rare\":1}\n"
    "{\"title\":null,\"<script>document.title=1</script>\":1}\n")
execute_process(COMMAND ${COMMAND} audit season pages.ndjson --html page.html
                WORKING_DIRECTORY ${FOLDER} COMMAND_ERROR_IS_FATAL ANY)
file(APPEND ${FOLDER}/page.html [=[
<script>
const names = id => [...document.querySelectorAll("#" + id + " > li:not([hidden]) .name > code")]
  .map(code => code.textContent).join();
const change = (element, value) => {
  element.value = value;
  element.dispatchEvent(new Event(element.localName === "input" ? "input" : "change"));
};
const [search, only, order] = document.querySelectorAll("[data-list=properties] :is(input, select)");
const seen = [names("properties")];
change(order, "text 1");
seen.push(names("properties"));
change(order, "share -1");
seen.push(names("properties"));
change(only, "null");
seen.push(names("properties"));
change(only, "");
change(search, "S NUM");
seen.push(names("properties"));
seen.push(document.querySelector("[data-list=properties] output").value);
change(document.querySelector("[data-list=unread] select"), "total 1");
seen.push(names("unread"));
const row = document.querySelector("#properties > li:not([hidden])");
const isShown = () => row.querySelector(".examples").checkVisibility();
seen.push(isShown());
row.querySelector("summary").click();
seen.push(isShown(), row.querySelector(".examples").innerText.includes("pages.ndjson:2"));
seen.push(performance.getEntriesByType("resource").length, document.title);
document.body.textContent = "seen:" + seen.join("|") + ":";
</script>
]=])
execute_process(
    COMMAND ${BROWSER} --headless --no-sandbox --disable-gpu --user-data-dir=${FOLDER}/browser
            --dump-dom file://${FOLDER}/page.html
    OUTPUT_VARIABLE page ERROR_QUIET)
string(REGEX MATCH "seen:([^\n]*):" seen "${page}")
string(CONCAT expected
    "seasonNumber,assets,title|assets,seasonNumber,title|title,seasonNumber,assets|title|seasonNumber|1 of 3|"
    "/&lt;script&gt;document.title=1&lt;~1script&gt;,/rare,/odd|false|true|true|0|Audit of season documents")
if(NOT CMAKE_MATCH_1 STREQUAL expected)
    message(FATAL_ERROR "the page shows\n${CMAKE_MATCH_1}\ninstead of\n${expected}")
endif()
