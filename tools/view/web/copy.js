// Tables copied as text, as CSV, or saved as a file of CSV.
(function (view) {
  'use strict';

  const thanks = 1200; // milliseconds for which a button says that it was done

  view.addTexts({
    en: {
      copy: 'Copy', copyHint: 'Copy the table as text, for spreadsheets and letters', copyCsvHint: 'Copy the table as CSV',
      copySaveHint: 'Save the table as a CSV file',
    },
    ru: {
      copy: 'Копировать', copyHint: 'Скопировать таблицу как текст, для электронных таблиц и писем', copyCsvHint: 'Скопировать таблицу в виде CSV',
      copySaveHint: 'Сохранить таблицу в файл CSV',
    },
  });

  const signs = { copyCsv: 'CSV', copySave: '↓' }; // in any language
  const digits = 10; // of a number, more than any record has
  const byteOrderMark = '\ufeff'; // by which spreadsheets know UTF-8
  const isRussian = () => document.documentElement.lang === 'ru';
  const isNumber = (text) => /^[-+]?\d+(\.\d+)?(e[-+]?\d+)?$/i.test(text);

  // The text of a number in a copied table; nothing where there is none.
  view.copiedNumber = (value) => (Number.isFinite(value) ? String(Number(value.toPrecision(digits))) : '');

  // What a cell holds: its data-copy, otherwise its text; numbers with a decimal point and a minus as programs read them.
  function contentOf(cell) {
    if (cell.dataset.copy !== undefined) return cell.dataset.copy;
    const text = cell.textContent.trim();
    const plain = text.replace('−', '-').replace(',', '.').replace(/°$/, '');
    if (text === '—') return '';
    return isNumber(plain) ? plain : text.replace(/^\+(?=\d)/, ''); // "+20 ms" is no formula either
  }

  // The rows of a table that are shown, as lists of texts; a cell across several columns has its text in each.
  view.tableRows = (table) => [...table.rows].filter((row) => !row.hidden).map((row) =>
    [...row.cells].flatMap((cell) => new Array(cell.colSpan).fill(contentOf(cell))));

  // A number as the language writes it. Any other text that a spreadsheet would take for a formula is marked as a text.
  function written(text) {
    if (isNumber(text)) return isRussian() ? text.replace('.', ',') : text;
    return /^[=+\-@\t\r]/.test(text) ? `'${text}` : text;
  }

  // Rows as text, separated by tabs.
  view.asText = (rows) => rows.map((row) => row.map((text) => written(text).replace(/[\t\r\n]+/g, ' ')).join('\t')).join('\n') + '\n';

  // Rows as CSV (RFC 4180); in Russian with semicolons and decimal commas, as spreadsheets expect there.
  view.asCsv = function (rows) {
    const separator = isRussian() ? ';' : ',';
    const field = (text) => (/[",;\r\n]/.test(text) ? `"${text.replace(/"/g, '""')}"` : text);
    return rows.map((row) => row.map((text) => field(written(text))).join(separator)).join('\r\n') + '\r\n';
  };

  // Where the browser has no clipboard for the page, as some have none for files.
  function copySelected(text) {
    const area = view.html('textarea', { className: 'copied', value: text });
    const focused = document.activeElement;
    document.body.append(area);
    area.select();
    const isCopied = document.execCommand('copy');
    area.remove();
    if (focused) focused.focus();
    return isCopied;
  }

  async function toClipboard(text) {
    try {
      await navigator.clipboard.writeText(text);
      return true;
    } catch {
      return copySelected(text);
    }
  }

  function save(csv, name) {
    const address = URL.createObjectURL(new Blob([byteOrderMark, csv], { type: 'text/csv' }));
    const link = view.html('a', { href: address, download: `${name.replace(/[\\/:*?"<>|\s]+/g, '_')}.csv` });
    link.click();
    setTimeout(() => URL.revokeObjectURL(address), 60000);
  }

  function thank(button, text) {
    button.textContent = '✓';
    setTimeout(() => { button.textContent = text; }, thanks);
  }

  // Buttons that copy a table and save it. table: an element, or a function that returns its rows as lists of texts, numbers
  // being as copiedNumber writes them; name: of the file.
  view.copyTable = function (table, name) {
    const rows = () => (typeof table === 'function' ? table() : view.tableRows(table));
    const actions = {
      copy: async () => (await toClipboard(view.asText(rows()))) || save(view.asCsv(rows()), name),
      copyCsv: async () => (await toClipboard(view.asCsv(rows()))) || save(view.asCsv(rows()), name),
      copySave: async () => save(view.asCsv(rows()), name),
    };
    return view.html('span', { className: 'switch copy' }, ...Object.keys(actions).map((key) => {
      const textContent = signs[key] || view.text(key);
      const button = view.html('button', { type: 'button', textContent, title: view.text(`${key}Hint`) });
      button.setAttribute('aria-label', button.title);
      button.dataset.copies = key;
      button.addEventListener('click', async () => {
        button.style.minWidth = `${button.offsetWidth}px`; // while it says so
        await actions[key]();
        thank(button, textContent);
      });
      return button;
    }));
  };
})(globalThis.zuView = globalThis.zuView || {});
