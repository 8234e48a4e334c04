// The container's rules, evaluated for each event. A container is data:
//   { "containerId": "...", "variables": { name: definition }, "rules": [ rule, ... ] }
// A variable is {"param": "key"}, {"event": "name"|"timestamp"}, {"constant": value},
// {"encode": {input, from, to, padding}} or {"encrypt": {spec, key, iv, input, from, to}}; texts
// of a rule may hold "{{name}}", "{{param.key}}", "{{event.name}}" or "{{event.timestamp}}".
// A rule: {"on": event name or "*", "when": [conditions], "hits": [...], "tags": [...],
// "log": text, "dispatch": bool, "preventDefault": bool}. A condition names a "param" or a "var"
// and tests "equals", "notEquals", "exists", "matches" (a regular expression) or "in" (a list).
(function () {
    "use strict";

    var native = null;
    var container = { variables: {}, rules: [] };

    function lookup(path, scope) {
        var parts = String(path).split(".");
        var value = scope;
        for (var i = 0; i < parts.length; ++i) {
            if (value === null || value === undefined) return undefined;
            value = value[parts[i]];
        }
        return value;
    }

    function render(value, scope) {
        if (typeof value === "string") {
            return value.replace(/\{\{\s*([A-Za-z0-9_.]+)\s*\}\}/g, function (whole, path) {
                var found = path.indexOf(".") >= 0 ? lookup(path, scope) : scope["var"][path];
                return found === undefined || found === null ? "" : String(found);
            });
        }
        if (Array.isArray(value)) return value.map(function (v) { return render(v, scope); });
        if (value !== null && typeof value === "object") {
            var out = {};
            Object.keys(value).forEach(function (key) { out[key] = render(value[key], scope); });
            return out;
        }
        return value;
    }

    function variable(definition, scope) {
        if (definition === null || typeof definition !== "object") return definition;
        if ("param" in definition) return scope.param[definition.param];
        if ("event" in definition) return scope.event[definition.event];
        if ("constant" in definition) return definition.constant;
        if ("encode" in definition) {
            var e = render(definition.encode, scope);
            return native.encodeString(e.input, e.from || "text", e.to || "base64", e.padding !== false);
        }
        if ("encrypt" in definition) {
            var c = render(definition.encrypt, scope);
            return native.encryptString(c.spec, c.key, c.iv || "", c.input, c.from || "text", c.to || "base64");
        }
        return undefined;
    }

    function holds(condition, scope) {
        var value = "param" in condition ? scope.param[condition.param] : scope["var"][condition["var"]];
        if ("exists" in condition) return (value !== undefined && value !== null) === !!condition.exists;
        if (value === undefined || value === null) return false;
        if ("equals" in condition) return String(value) === String(condition.equals);
        if ("notEquals" in condition) return String(value) !== String(condition.notEquals);
        if ("matches" in condition) return new RegExp(condition.matches).test(String(value));
        if ("in" in condition) return condition["in"].map(String).indexOf(String(value)) >= 0;
        return false;
    }

    return {
        initializeRuntime: function (instructions, resource) {
            native = instructions;
            container = resource || {};
            container.variables = container.variables || {};
            container.rules = Array.isArray(container.rules) ? container.rules : [];
            return true;
        },

        emitEvent: function (name, parameters, timestamp) {
            var scope = { param: parameters || {}, event: { name: name, timestamp: timestamp }, "var": {} };
            Object.keys(container.variables).forEach(function (key) {
                scope["var"][key] = variable(container.variables[key], scope);
            });
            var result = { dispatch: false, preventDefault: false };
            container.rules.forEach(function (rule) {
                if (rule.on !== "*" && rule.on !== name) return;
                if (!(rule.when || []).every(function (c) { return holds(c, scope); })) return;
                if (rule.log) native.logMessage(render(rule.log, scope));
                (rule.hits || []).forEach(function (hit) {
                    var h = render(hit, scope);
                    native.queueHit(h.url, h.method || "GET", h.headers || {}, h.body || "", h.uniqueId || "");
                });
                (rule.tags || []).forEach(function (tag) { native.sendDiglagiTag(render(tag, scope)); });
                if (rule.dispatch === true) result.dispatch = true;
                if (rule.preventDefault === true) result.preventDefault = true;
            });
            return result;
        }
    };
})()
