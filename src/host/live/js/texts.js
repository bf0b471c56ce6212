// The texts that hosts send: JSON, or the XML of CasparCG; and which fields they are for.

/**
 * Letters of Latin-1 in lower case, without surrounding blanks.
 * @param {string} name
 */
function foldedName(name) {
    return name.replace(/^ +| +$/g, '')
        .replace(/[A-Z\u00C0-\u00D6\u00D8-\u00DE]/g, letter => String.fromCharCode(letter.charCodeAt(0) + 0x20));
}

/**
 * The only index whose element has a property; -1 if there is none or more than one.
 * @template T
 * @param {T[]} elements
 * @param {(element: T) => boolean} has
 */
function onlyIndex(elements, has) {
    const index = elements.findIndex(has);
    return index >= 0 && elements.slice(index + 1).some(has) ? -1 : index;
}

/**
 * The field that a key names: by its name, by its name without regard to case and surrounding blanks, or by its number
 * as f0, f1 and so on; -1 if there is none or more than one.
 * @param {Field[]} fields
 * @param {string} key
 */
function findField(fields, key) {
    const exact = onlyIndex(fields, field => field.address === key);
    if (exact >= 0) return exact;
    const folded = foldedName(key), number = /^f([0-9]+)$/.exec(folded);
    if (number !== null) return Number(number[1]) < fields.length ? Number(number[1]) : -1;
    return folded === '' ? -1 : onlyIndex(fields, field => foldedName(field.name) === folded);
}

/**
 * SPX sends a quotation mark and a backslash in this form.
 * @param {string} text
 */
function withoutEntities(text) {
    return text.replace(/&#(34|92);/g, (_, code) => String.fromCharCode(Number(code)));
}

/**
 * The texts of an object by key; anything but texts and numbers is left out.
 * @param {any} data
 */
function textsOfObject(data) {
    /** @type {Map<string, string>} */
    const texts = new Map();
    if (data === null || typeof data !== 'object') return texts;
    for (const key of Object.keys(data)) {
        const value = data[key];
        if (typeof value === 'string' || typeof value === 'number') texts.set(key, withoutEntities(String(value)));
    }
    return texts;
}

/** @param {string} text  JSON. A control character inside a text, which some hosts let through, counts as a blank. */
function parseJson(text) {
    try {
        return JSON.parse(text);
    } catch (error) {
        return JSON.parse(text.replace(/[\u0000-\u001F]/g, ' '));
    }
}

/**
 * The texts of templateData: each componentData has an id and an element data with the id "text" and its value.
 * @param {string} text
 */
function textsOfXml(text) {
    /** @type {Map<string, string>} */
    const texts = new Map();
    const xml = new DOMParser().parseFromString(text, 'text/xml');
    if (xml.getElementsByTagName('parsererror').length > 0) throw new Error('the XML is damaged');
    for (const component of Array.from(xml.getElementsByTagName('componentData'))) {
        const data = Array.from(component.getElementsByTagName('data'));
        const value = data.find(element => element.getAttribute('id') === 'text' && element.hasAttribute('value'));
        const id = component.getAttribute('id');
        if (id !== null && value) texts.set(id, value.getAttribute('value') || '');
    }
    return texts;
}

/**
 * The texts by key of what a host sends to update; none of anything that isn't understood.
 * @param {any} data  JSON or XML in a text; or the object itself.
 */
function textsOf(data) {
    if (typeof data !== 'string') return textsOfObject(data);
    const text = data.trim();
    try {
        if (text[0] === '{') return textsOfObject(parseJson(text));
        if (text[0] === '<') return textsOfXml(text);
    } catch (error) {
        console.warn('The data isn\'t understood, and nothing is changed: ' + error);
    }
    return /** @type {Map<string, string>} */ (new Map());
}
