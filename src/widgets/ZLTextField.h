#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

/// A field with its name before it. Two of them below each other are brought in line by alignTextFields().
class ZLTextField : public QWidget {
    Q_OBJECT
public:
    explicit ZLTextField(const QString &placeholder, QWidget *parent = nullptr);

    QLineEdit *textField() const { return m_textField; }
    QString stringValue() const;
    void setStringValue(const QString &text);
    void setSecure(); ///< shows dots
    static void alignTextFields(const QList<ZLTextField *> &fields);

private:
    QLabel *m_label;
    QLineEdit *m_textField;
};
