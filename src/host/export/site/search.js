// The search of a site's index. It finds what the search of a library finds: each word as the beginning of a word, in
// the rows of a message, the names of its tab fields or its source, without regard to case and accents.

/** Between the columns of a message, so that no phrase goes from one into another. */
const COLUMN_END = "\u0001";

/**
 * A text as its words, each after a blank: letters and digits in lower case, without accents.
 * @param {string} text
 * @returns {string}
 */
function foldedWords(text) {
    if (!/[^\0-\x7f]/.test(text)) {
        return (" " + text.toLowerCase()).replace(/[^a-z0-9]+/g, " ").trimEnd();
    }
    // The last two are letters that have the same form in another case.
    const lower = text.toLowerCase().normalize("NFD").replace(/\p{M}+/gu, "").replace(/ς/g, "σ").replace(/µ/g, "μ");
    return (" " + lower).replace(/[^\p{L}\p{N}\p{Co}]+/gu, " ").trimEnd();
}

/**
 * What is searched for: the folded texts that all have to be found.
 * @param {string} query
 * @returns {{isEmpty: boolean, parts: string[]}} isEmpty: without anything but blanks
 */
function parseQuery(query) {
    const words = query.split(/[\0 \t-\r]+/).filter((word) => word !== "");
    return {isEmpty: words.length === 0, parts: words.map(foldedWords).filter((part) => part !== "")};
}

/** The folded texts of all messages. They are made piece by piece, so that the page stays usable meanwhile. */
class SearchIndex {
    /**
     * @param {number} count of messages
     * @param {(message: number) => string[]} columnsOf
     */
    constructor(count, columnsOf) {
        this.count = count;
        this.columnsOf = columnsOf;
        /** @type {string[]} */
        this.folded = [];
    }

    /**
     * Folds more messages.
     * @param {number} most
     * @returns {boolean} whether all are folded
     */
    prepare(most) {
        const end = Math.min(this.count, this.folded.length + most);
        for (let message = this.folded.length; message < end; ++message) {
            this.folded.push(this.columnsOf(message).map(foldedWords).join(COLUMN_END));
        }
        return end === this.count;
    }

    /**
     * @param {string} query
     * @returns {number[] | null} the messages that have all words, in their order; null for all
     */
    find(query) {
        const {isEmpty, parts} = parseQuery(query);
        if (isEmpty) {
            return null;
        }
        this.prepare(this.count);
        /** @type {number[]} */
        const found = [];
        if (parts.length > 0) {
            this.folded.forEach((text, message) => {
                if (parts.every((part) => text.includes(part))) {
                    found.push(message);
                }
            });
        }
        return found;
    }
}
