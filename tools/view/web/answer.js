// The first sheet: what happened.
(function (view) {
  'use strict';

  view.addTexts({
    en: { answer: 'What happened' },
    ru: { answer: 'Что произошло' },
  });

  view.AnswerSheet = class {
    constructor(page, element) {
      this.element = element;
      this.answer = page.data.answer;
    }

    build() {
      const sentences = this.answer.sentences[document.documentElement.lang].map((sentence) =>
        Object.assign(document.createElement('p'), { textContent: sentence }));
      this.element.replaceChildren(...sentences);
    }

    draw() {}
  };
})(globalThis.zuView = globalThis.zuView || {});
