-- A number times b's inverse as the table has it: 384 and the digits in base 4 of a row, each as its value plus 1.
--   step scale:  rows of the product; three times the number
--   step near:   the product
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_divfp2x_scale is
  generic (scale_border : natural);                    -- 1: a register behind the step
  port (sysclk, enable : in std_logic;
        number  : in std_logic_vector(53 downto 0);
        row     : in std_logic_vector(8 downto 0);     -- with the highest bit the last digit, of code 3, is -2
        product : out std_logic_vector(62 downto 0));
end xfc_divfp2x_scale;

architecture rtl of xfc_divfp2x_scale is
  constant number_bits  : positive := 54;
  constant digit_bits   : positive := 8;
  constant product_bits : positive := number_bits + digit_bits + 1;
  constant no_first     : std_logic_vector(number_bits + 1 downto 0) := (others => '0');

  -- scale
  signal extended : std_logic_vector(number_bits downto 0);
  signal rows_d, rows : std_logic_vector(product_bits - 1 downto 0);
  signal short_d, short : std_logic_vector(0 downto 0);
  signal triple_d, triple : std_logic_vector(number_bits + 1 downto 0);

  -- near
  signal augend : std_logic_vector(product_bits - 1 downto 0);
begin
  -- scale
  extended <= '0' & number;
  add_rows : entity work.xfc_product_rows generic map (number_bits + 1, 4)
    port map (sysclk, enable, extended, no_first, '0', row(digit_bits - 1 downto 0), row(digit_bits), rows_d,
              short_d(0));
  triple_d <= std_logic_vector(resize(unsigned(number), number_bits + 2) + unsigned(extended & '0'));

  scale_0 : entity work.xfc_register generic map (product_bits, scale_border) port map (sysclk, enable, rows_d, rows);
  scale_1 : entity work.xfc_register generic map (1, scale_border) port map (sysclk, enable, short_d, short);
  scale_2 : entity work.xfc_register generic map (number_bits + 2, scale_border)
    port map (sysclk, enable, triple_d, triple);

  -- near: 384 is three times 2 ** 7
  augend <= triple & "000000" & short;
  product <= std_logic_vector(unsigned(augend) + unsigned(rows));
end rtl;
