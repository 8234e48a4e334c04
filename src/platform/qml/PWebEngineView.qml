// qmllint disable import
// Qt 6.4's own web channel type file carries mismatched revisions; the warning is about Qt, not this view.
import QtQuick
import QtWebEngine
import Ekinora.Platform

WebEngineView {
    id: web
    property WKWebView model: null
    property bool scrollsSideways: true
    // A sideways move is taken back by the view; the page keeps its own styles.
    onScrollPositionChanged: if (!scrollsSideways && scrollPosition.x !== 0) runJavaScript("window.scrollTo(0, window.scrollY);")
    backgroundColor: "transparent"
    // A PDF address opens in the engine's own viewer, as the phone's web view shows documents.
    settings.pluginsEnabled: true
    settings.pdfViewerEnabled: true

    // Qt WebEngine hands a link to a scheme it doesn't load itself ("mailto:", "tel:") straight to the
    // desktop, without a navigation request. This script catches such a tap in the page and reports it,
    // so that the screen decides on it like on any tapped link.
    readonly property string externalLinkPrefix: "ekinora-external-link:"
    readonly property string externalLinkScript: "(function () {
        if (window.__ekinoraExternalLinks) return;
        window.__ekinoraExternalLinks = true;
        var loaded = ['http:', 'https:', 'about:', 'data:', 'file:', 'blob:', 'javascript:', 'qrc:'];
        document.addEventListener('click', function (event) {
            var node = event.target;
            while (node && !(node.tagName === 'A' && node.href)) node = node.parentElement;
            if (!node || loaded.indexOf(node.protocol) >= 0) return;
            event.preventDefault();
            console.info('" + externalLinkPrefix + "' + node.href);
        }, true);
    })();"

    // The script collection's type is not exposed to the linter by Qt 6.4's web engine module.
    Component.onCompleted: userScripts.collection = [{ // qmllint disable type
        name: "externalLinks",
        sourceCode: externalLinkScript,
        injectionPoint: WebEngineScript.DocumentCreation,
        worldId: WebEngineScript.MainWorld,
        runOnSubframes: true
    }]

    function reload() {
        if (!model) return
        if (model.html.length > 0 || String(model.url).length === 0) loadHtml(model.html, model.baseUrl)
        else url = model.url
    }
    onModelChanged: reload()
    Connections {
        target: web.model
        function onLoadRequested() { web.reload() }
        function onScriptRequested(id, script) {
            web.runJavaScript(script, function(result) { web.model.scriptFinished(id, result) })
        }
    }
    onNavigationRequested: function(request) {
        // Qt's kinds in the platform's numbering: a link is 0, a form 1, back or forward 2, reload 3.
        var kinds = {0: 0, 2: 1, 3: 2, 4: 3}
        var kind = kinds[request.navigationType] !== undefined ? kinds[request.navigationType] : -1
        // An HTML string loads as a data address; the screen sees it as the blank page it stands for.
        var address = String(request.url).indexOf("data:") === 0 ? "about:blank" : request.url
        if (!web.model.shouldNavigate(address, kind)) request.action = WebEngineNavigationRequest.IgnoreRequest
    }
    onJavaScriptConsoleMessage: function(level, message, lineNumber, sourceID) {
        if (message.indexOf(externalLinkPrefix) !== 0) return
        // A tapped link like any other; allowed, it goes to the desktop as Qt would have sent it.
        var address = message.substring(externalLinkPrefix.length)
        if (web.model && web.model.shouldNavigate(address, 0)) Qt.openUrlExternally(address)
    }
    onLoadingChanged: function(info) {
        if (info.status === WebEngineView.LoadSucceededStatus) web.model.navigationFinished()
        else if (info.status === WebEngineView.LoadFailedStatus) web.model.navigationFailed()
    }
}
